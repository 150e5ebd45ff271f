#include "tests/tools/check/check_test.h"
