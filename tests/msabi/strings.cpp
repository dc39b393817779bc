#include "support.h"
void TestStrings() {}
