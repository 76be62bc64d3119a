#include "source/settingsRecord.h"

PrefsRec *gPrefsPtr = nullptr;
PrefsRec *gSavedPrefs = nullptr;
