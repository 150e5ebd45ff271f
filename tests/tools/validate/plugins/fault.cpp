#include "fault.h"

Fault const kFault = Fault::VRL_TEST_FAULT;
