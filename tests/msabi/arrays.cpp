#include "support.h"
void TestArrays() {}
