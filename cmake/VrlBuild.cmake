# What every target of this project is built with.

# The same folders wherever the tree is unpacked: they do not depend on the prefix that is configured.
if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_INSTALL_LIBDIR lib CACHE STRING "Folder of the libraries, below the prefix")
endif()
include(GNUInstallDirs)

if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

set(VRL_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)

include(VrlPlugin)
if(VRL_SANITIZE)
    set(VRL_PLUGIN_OPTIONS ALLOW_UNDEFINED)
endif()

# Language, visibility, warnings and sanitisers of a target of ours; none of it reaches the users of the library.
function(vrl_target_defaults target)
    target_compile_features(${target} PRIVATE cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
    if(VRL_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VRL_SANITIZE)
        target_compile_options(${target} PRIVATE ${VRL_SANITIZER_FLAGS})
        target_link_options(${target} PRIVATE ${VRL_SANITIZER_FLAGS})
    endif()
    # Undefined symbols are an error on both systems. The sanitisers' own come with the program.
    if(NOT WIN32 AND NOT VRL_SANITIZE)
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()

# A plug-in of this tree, made as the users of the installed package make theirs: plugins/lib_wn_NAME.so.5.1.3 in the build
# folder, on Windows lib_wn_NAME.5.1.3.dll.
function(vrl_add_sample_plugin name)
    vrl_add_plugin(${name} ${ARGN} ${VRL_PLUGIN_OPTIONS})
    vrl_target_defaults(${name})
    set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/plugins)
endfunction()
