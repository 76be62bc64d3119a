// The checks of complete numbers compared with a model, on very many texts: with and
// without report, with either separator, for every kind of value.
#include "source/open_settings.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <random>

#include "source/ktAnnoDlg.h"
#include "source/ktFreqDlg.h"
#include "support/sanitized.h"
#include "toolbox/menus.h"

namespace
{

struct Verdict {
    bool passed = true;
    int message = 0;   // reported, 0 for none
    std::string text;  // as the check leaves it
    std::string field; // what the dialog's field then holds

    bool operator==(const Verdict &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Verdict &verdict)
{
    return out << (verdict.passed ? "passed" : "refused") << " message " << verdict.message << " text \""
               << verdict.text << "\" field \"" << verdict.field << "\"";
}

// Compared for each kind, separator and mode.
const int kTexts = triesAll() ? 100000 : triesLess() ? 2000 : 25000;

const std::string kSaved = "45"; // what the field held on opening

// --- The model --------------------------------------------------------------

struct Number {
    enum { good, strange, separators } kind;
    std::string whole, fraction;
    bool hasSeparator;
    double value;
};

Number numberIn(const std::string &text, char point)
{
    auto separators = std::count(text.begin(), text.end(), point);
    bool strange = std::any_of(text.begin(), text.end(),
                               [&](char letter) { return letter != point && (letter < '0' || letter > '9'); });
    std::size_t at = std::min(text.find(point), text.size());
    Number number{strange          ? Number::strange
                  : separators > 1 ? Number::separators
                                   : Number::good,
                  text.substr(0, at), at < text.size() ? text.substr(at + 1) : "", separators == 1, 0};
    if (number.kind == Number::good)
        number.value = std::strtod(("0" + number.whole + "." + number.fraction + "0").c_str(), nullptr);
    return number;
}

struct Range {
    int16_t kind;
    int message;
    double least, most;
    std::string leastText, mostText;
};

std::vector<Range> ranges(char point)
{
    return {{kFreqKind, 16141, 1, 999, "1", "999"},
            {kAngleKind, 16142, 0, 360, "0", "360"},
            {kFlatKind, 16143, 0.2, 200, point == '.' ? "0.2" : "0,2", "200"}};
}

// What tidying leaves of a number: 007 is 7, 12.500 is 12.5, 00.5 is .5.
std::string tidied(const Number &number, const std::string &text, char point)
{
    std::string whole = number.whole, fraction = number.fraction;
    bool needed = text.size() < 2 || text[0] != '0' || text[1] == point;
    if (!needed)
        whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return whole + (fraction.empty() ? "" : point + fraction);
}

Verdict refused(int message, const std::string &text, const std::string &field, bool report)
{
    return {false, report ? message : 0, text, report ? field : kSaved};
}

// At most four digits after the separator; without one, three characters.
Verdict countingDecimals(const std::string &text, char point, bool report)
{
    std::size_t at = text.find(point);
    if (at == std::string::npos ? text.size() < 4 : text.size() - at - 1 < 5)
        return {true, 0, text, kSaved};
    std::string cut = report ? text.substr(0, at == std::string::npos ? 3 : at + 5) : text;
    return refused(16144, cut, cut, report);
}

Verdict modelOf(std::string text, const Range &range, char point, bool report)
{
    Number number = numberIn(text, point);
    if (number.kind == Number::strange)
        return refused(16132, text, kSaved, report);
    if (number.kind == Number::separators)
        return refused(16140, text, kSaved, report);
    if (report)
        text = tidied(number, text, point);
    if (range.kind == kAngleKind) {
        if (text == std::string(1, point))
            return refused(range.message, text, kSaved, report);
        if (report && number.value == 0)
            text = "0";
        else if (report && text[0] == point)
            text = "0" + text;
    }
    if (text.empty())
        return refused(range.message, text, kSaved, report);
    if (number.value < range.least || number.value > range.most)
        return refused(range.message, text, number.value < range.least ? range.leastText : range.mostText, report);
    return countingDecimals(text, point, report);
}

Verdict sizeModel(const std::string &text, char point, bool report)
{
    Number number = numberIn(text, point);
    if (number.kind == Number::strange)
        return refused(16132, text, kSaved, report);
    if (number.hasSeparator)
        return refused(16165, text, kSaved, report);
    if (number.value < 4 || number.value > 30)
        return refused(16166, text, number.value < 4 ? "4" : "30", report);
    return {true, 0, text, kSaved};
}

// --- The texts --------------------------------------------------------------

// Each bound, and one unit in the last place to either side, with 0 to 11 decimals.
std::vector<std::string> boundaries(char point)
{
    std::vector<std::string> texts;
    for (long tenths : {0L, 2L, 10L, 40L, 300L, 2000L, 3600L, 9990L})
        for (int decimals = 0; decimals <= 11; ++decimals) {
            long long unit = 1;
            for (int i = 0; i < decimals; ++i)
                unit *= 10;
            for (long long last : {-1LL, 0LL, 1LL}) {
                long long scaled = tenths * unit / 10 + last;
                if (scaled < 0)
                    continue;
                std::string fraction = std::to_string(scaled % unit);
                fraction.insert(0,
                                static_cast<std::size_t>(decimals) -
                                    std::min(fraction.size(), static_cast<std::size_t>(decimals)),
                                '0');
                texts.push_back(std::to_string(scaled / unit) + (decimals ? point + fraction : ""));
            }
        }
    return texts;
}

// A number as people type one, right or wrong, or none at all; mostly with up to
// digitsOfIt digits.
std::string randomText(std::mt19937 &random, char point, unsigned digitsOfIt, unsigned oneInSoManyHasSeparator)
{
    auto digits = [&](unsigned most) {
        std::string all(random() % (most + 1), '0');
        for (char &digit : all)
            if (random() % 3)
                digit = static_cast<char>('0' + random() % 10);
        return all;
    };
    std::string text = digits(random() % 60 ? digitsOfIt : 120);
    if (random() % oneInSoManyHasSeparator == 0)
        text += point + digits(random() % 70 ? 6 : 120);
    if (random() % 40 == 0)
        text.insert(random() % (text.size() + 1), 1, point);
    if (random() % 60 == 0)
        text.insert(random() % (text.size() + 1), 1, "-+ eE.,x\r\xA1"[random() % 10]);
    return text;
}

class ValueModel : public OpenSettings
{
protected:
    // The user presses Return at every report.
    void SetUp() override
    {
        machine.wantPictures(false);
        OpenSettings::SetUp();
        unsigned seed = std::random_device{}();
        std::printf("random texts from seed %u\n", seed);
        random.seed(seed);
    }

    void openWith(char separator, int16_t dialogID)
    {
        configuration.decimalPoint = separator;
        reopen();
        gTheDialog = GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
        toolbox::setPascal(gSavedFreqStr, kSaved, 15);
        toolbox::setPascal(settings.annoSizeStr, kSaved, 15);
        takenField(dialogID == kAnnoDialogID ? 8 : 4);
        machine.setSource([] {
            toolbox::Input key{toolbox::Input::Kind::keyDown};
            key.character = 13;
            return std::optional<toolbox::Input>(key);
        });
    }

    void closeDialog()
    {
        machine.setSource({});
        DisposDialog(gTheDialog);
        gTheDialog = nullptr;
    }

    // The check's verdict on the text, with the field at item.
    Verdict verdict(const std::string &text, int16_t item, const std::function<bool(unsigned char *)> &check)
    {
        trace.clear();
        P changed(text);
        Verdict is{check(changed), 0, plain(changed), kSaved};
        if (trace.empty())
            return is;
        for (const std::string &line : trace)
            if (line.rfind("string ", 0) == 0)
                is.message = std::stoi(line.substr(7));
        is.field = takenField(item);
        return is;
    }

    // Returns what the field holds, and restores what it held before.
    std::string takenField(int16_t item)
    {
        int16_t type;
        Handle field;
        Rect box;
        Str255 shown;
        GetDItem(gTheDialog, item, &type, &field, &box);
        GetIText(field, shown);
        SetIText(field, P(kSaved));
        return plain(shown);
    }

    // Whether there is time for the text: each reported refusal opens and closes a
    // dialog.
    bool affordable(const Verdict &should, bool report) { return !report || should.passed || --reportsLeft >= 0; }

    bool agreesOnValue(const std::string &text, const Range &range, char point, bool report)
    {
        Verdict should = modelOf(text, range, point, report);
        if (!affordable(should, report))
            return false;
        Verdict is =
            verdict(text, 4, [&](unsigned char *changed) { return DoFreqStrCheck(changed, range.kind, report); });
        EXPECT_EQ(is, should) << "\"" << text << "\" kind " << range.kind << (report ? " reporting" : "");
        return true;
    }

    bool agreesOnSize(const std::string &text, char point, bool report)
    {
        Verdict should = sizeModel(text, point, report);
        if (!affordable(should, report))
            return false;
        Verdict is = verdict(text, 8, [&](unsigned char *changed) { return DoSizeStrCheck(changed, report); });
        EXPECT_EQ(is, should) << "\"" << text << "\"" << (report ? " reporting" : "");
        return true;
    }

    // Compares kTexts random texts; agrees returns whether it compared the text.
    void compareMany(const std::function<std::string()> &next,
                     const std::function<bool(const std::string &)> &agrees)
    {
        reportsLeft = allReports() ? INT_MAX : triesLess() ? 40 : 300;
        for (int compared = 0; compared < kTexts && !HasFailure();)
            compared += agrees(next());
    }

    static bool allReports()
    {
        const char *all = std::getenv("RIDERS_ALL_REPORTS");
        return all && *all == '1';
    }

    int reportsLeft = INT_MAX;
    std::mt19937 random;
};

} // namespace

TEST_F(ValueModel, ValuesAgreeOnEveryBoundary)
{
    for (char point : {'.', ','}) {
        openWith(point, kFreqDialogID);
        for (const Range &range : ranges(point))
            for (bool report : {false, true})
                for (const std::string &text : boundaries(point))
                    agreesOnValue(text, range, point, report);
        closeDialog();
    }
}

TEST_F(ValueModel, SizesAgreeOnEveryBoundary)
{
    for (char point : {'.', ','}) {
        openWith(point, kAnnoDialogID);
        for (bool report : {false, true})
            for (const std::string &text : boundaries(point))
                agreesOnSize(text, point, report);
        closeDialog();
    }
}

TEST_F(ValueModel, ValuesAgreeOnManyTexts)
{
    for (char point : {'.', ','}) {
        openWith(point, kFreqDialogID);
        auto next = [&] { return randomText(random, point, 4, 2); };
        for (const Range &range : ranges(point))
            for (bool report : {false, true})
                compareMany(next,
                            [&](const std::string &text) { return agreesOnValue(text, range, point, report); });
        closeDialog();
    }
}

TEST_F(ValueModel, SizesAgreeOnManyTexts)
{
    for (char point : {'.', ','}) {
        openWith(point, kAnnoDialogID);
        auto next = [&] { return randomText(random, point, 2, 8); };
        for (bool report : {false, true})
            compareMany(next, [&](const std::string &text) { return agreesOnSize(text, point, report); });
        closeDialog();
    }
}
