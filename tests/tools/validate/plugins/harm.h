#pragma once

namespace broken {

/// What a fault does to the program while a block is made.
void harmInConstructor();

}  // namespace broken
