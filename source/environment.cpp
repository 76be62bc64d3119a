#include "source/environment.h"

EnvirInfo *gEnvirInfo = nullptr;
