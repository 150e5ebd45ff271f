#include "tests/support/scenario.h"

int main(int count, char** words) { return vrl_test::runScenario(count, words); }
