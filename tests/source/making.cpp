#include "source/making.h"

#include <algorithm>

#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktMakeRiders.h"
#include "support/riders_pieces.h"

namespace fs = std::filesystem;

const std::string kOldContents(5000, 'o');

void Making::SetUp()
{
    OpenSettings::SetUp();
    gDone = false;
    fs::create_directory(out());
    chooseNothing();
}

int16_t Making::make(int expectedReports)
{
    user.answerSave(file());
    for (int i = 0; i < expectedReports; ++i)
        dismiss();
    int16_t result = -1;
    guarded([&] { result = MakeCustomRiders(); });
    EXPECT_TRUE(user.idle()) << "fewer reports than expected";
    user.forgetRest();
    return result;
}

void Making::chooseEverything()
{
    choose(&PrefsRec::freqItem, 5);
    choose(&PrefsRec::angleItem, 6);
    choose(&PrefsRec::spotItem, 3);
    choose(&PrefsRec::flatItem, 4);
    choose(&PrefsRec::annoItem, 2);
    choose(&PrefsRec::errorItem, 2);
}

std::string Making::expected() const
{
    std::string all = pieceBytes(16499) + pieceBytes(16500);
    if (settings.spotItem != 1)
        all += pieceBytes(16506) + pieceBytes(16128 + settings.spotItem - 3) + pieceBytes(16507);
    else if (settings.freqItem != 1 || settings.angleItem != 1)
        all += pieceBytes(16135);
    if (settings.freqItem != 1)
        all += pieceBytes(16501) + "35" + pieceBytes(16502);
    if (settings.angleItem != 1)
        all += pieceBytes(16503) + "45" + pieceBytes(16504);
    if (settings.flatItem != 1)
        all += pieceBytes(16560) + "1" + pieceBytes(16561);
    if (settings.annoItem == 2)
        all += pieceBytes(16508) + plain(gFontNameStr) + pieceBytes(16509) + plain(settings.annoSizeStr) +
               pieceBytes(16510) + plain(settings.annoText) + pieceBytes(16511);
    if (settings.errorItem == 2)
        all += pieceBytes(16520);
    return all + pieceBytes(16600);
}

void Making::writeOld()
{
    ASSERT_EQ(Create(P("made"), *toolbox::folders::workingDirectory(out()), 'RiDe', 'TEXT'), noErr);
    writeFile(file(), kOldContents);
}

std::vector<std::string> Making::files() const
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(out()))
        if (!entry.path().filename().string().starts_with("._"))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

FInfo Making::info() const
{
    FInfo info{};
    EXPECT_EQ(GetFInfo(P("made"), *toolbox::folders::workingDirectory(out()), &info), noErr);
    return info;
}

std::vector<std::string> Making::reports() const
{
    std::vector<std::string> found;
    for (const std::string &line : trace) {
        auto number = line.find("ID = ");
        if (!line.starts_with("params") || number == std::string::npos)
            continue;
        std::string rest = line.substr(number + 5);
        auto context = rest.find(" (");
        found.push_back(rest.substr(0, rest.find('"')) + rest.substr(context, rest.find(')') + 1 - context));
    }
    return found;
}
