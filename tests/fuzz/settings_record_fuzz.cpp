// Any bytes as a settings record of this version: kept or replaced, and afterwards in order.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fuzz/plugin_session.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static PluginSession session;
    static const PrefsRec standard = session.settings;
    constexpr size_t version = offsetof(PrefsRec, freqItem);
    session.settings = standard;
    std::memcpy(reinterpret_cast<char *>(&session.settings) + version, data,
                std::min(size, sizeof(PrefsRec) - version));
    DoPrefsResCheck();
    CleanupPrefsStruct();
    const PrefsRec &now = session.settings;
    const auto isIn = [](int item, int last) { return item >= 1 && item <= last; };
    const bool inOrder = isIn(now.freqItem, 21) && isIn(now.angleItem, 15) && isIn(now.spotItem, 11) &&
                         isIn(now.flatItem, 13) && isIn(now.annoItem, 3) && isIn(now.errorItem, 2) &&
                         isIn(now.annoFontItem, 13) && now.annoText[0] > 0 &&
                         (now.spotImported != 1 || now.spotName[0] > 0);
    if (!inOrder || !session.user.idle())
        abort();
    for (const PrefsText &text : kPrefsTexts)
        if (now.freqStr[0] > 15 || TextIn(&session.settings, text)[0] > text.capacity)
            abort();
    return 0;
}
