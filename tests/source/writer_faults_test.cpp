// Every file call of a make fails in turn, once or from then on, for a new file and
// for one that is replaced.
#include "source/making.h"

#include <algorithm>
#include <map>

#include "source/errors.h"
#include "source/ktMakeRiders.h"
#include "support/sanitized.h"

namespace fs = std::filesystem;

namespace {

struct Fault {
    OSErr error;
    bool replacing;
    bool onward;
};

// The context of the report of the numbered FSWrite, with every section made.
const char *contextOfWrite(int number)
{
    struct {
        int last;
        const char *context;
    } const sections[] = {{2, " (fswrite)"},    {5, " (writespot)"},  {8, " (writefreq)"}, {11, " (writeangle)"},
                          {14, " (writeflat)"}, {21, " (writeanno)"}, {22, " (writeerror)"}};
    for (const auto &section : sections)
        if (number <= section.last)
            return section.context;
    return " (fswrite)";
}

class EveryFault : public Making, public ::testing::WithParamInterface<Fault> {
protected:
    void prepare()
    {
        fs::remove_all(out());
        fs::create_directory(out());
        if (GetParam().replacing)
            writeOld();
        chooseEverything();
        trace.clear();
        toolbox::faults::clear();
    }

    // Goes through the save dialog and dismisses all reports.
    void makeThroughReports(int call)
    {
        toolbox::faults::failAnyFileCall(call, GetParam().error, GetParam().onward);
        user.answerSave(file());
        for (int i = 0; i < 5; ++i)
            dismiss();
        guarded([] { EXPECT_EQ(MakeCustomRiders(), 1); });
        user.forgetRest();
    }

    // The call that failed: its kind, and its number among those of its kind.
    std::pair<std::string, int> metCall() const
    {
        std::map<std::string, int> counts;
        std::string failed = " -> " + std::to_string(GetParam().error);
        for (const std::string &line : trace) {
            if (line.rfind("file ", 0) != 0)
                continue;
            std::string kind = line.substr(5, line.find(' ', 5) - 5);
            int number = ++counts[kind];
            if (line.ends_with(failed))
                return {kind, number};
        }
        return {};
    }

    std::vector<std::string> expectedReports(const std::string &kind, int number) const
    {
        std::string error = std::to_string(GetParam().error);
        if (kind == "create")
            return {number == 1 ? error + " (create)" : "-43 (fsopen)"};
        if (kind == "open")
            return {error + " (fsopen)"};
        if (kind == "write" && number >= 3 && number <= 5)
            return {error + " (writespot)", "-51 (writefreq)"};
        if (kind == "write")
            return {error + contextOfWrite(number)};
        if (kind == "setEOF")
            return {error + " (eof)"};
        if (kind == "rename")
            return {error + (number == 1 ? " (rename1)" : " (rename2)")};
        if (kind == "remove")
            return {error + " (fsdelete)"};
        return {};
    }

    void expectNewFile() const
    {
        EXPECT_EQ(contentsOf(file()), expected());
        EXPECT_EQ(files(), std::vector<std::string>{"made"});
    }

    void expectOldFile() const
    {
        if (!GetParam().replacing) {
            EXPECT_EQ(files(), std::vector<std::string>{});
            return;
        }
        EXPECT_EQ(files(), std::vector<std::string>{"made"});
        EXPECT_EQ(contentsOf(file()), kOldContents);
        EXPECT_EQ(info().fdCreator, OSType{'RiDe'});
    }

    // Even if nothing can be put right, the old file is still there, perhaps under
    // another name.
    void expectOldContents() const
    {
        if (!GetParam().replacing)
            return;
        bool whole = false;
        for (const std::string &name : files())
            whole = whole || contentsOf(out() / name) == kOldContents;
        EXPECT_TRUE(whole);
    }

    void check(const std::string &kind, int number) const
    {
        std::vector<std::string> reported = reports();
        EXPECT_EQ(gHaveWriteError, !reported.empty());
        if (!GetParam().onward) {
            EXPECT_EQ(reported, expectedReports(kind, number));
        }
        if (reported.empty())
            expectNewFile();
        else if (GetParam().onward)
            expectOldContents();
        else
            expectOldFile();
    }
};

TEST_P(EveryFault, IsReportedAndClearedUp)
{
    // Among them, the six errors meet every call also where each of them meets every third only.
    const int step = triesLess() ? 3 : 1;
    for (int call = 1 + -GetParam().error % step;; call += step) {
        ASSERT_LT(call, 100);
        prepare();
        makeThroughReports(call);
        ASSERT_FALSE(ended);
        bool met = toolbox::faults::met();
        toolbox::faults::clear();
        if (!met) {
            EXPECT_GT(call, 27) << "too few calls were met";
            break;
        }
        auto [kind, number] = metCall();
        SCOPED_TRACE("call " + std::to_string(call) + ": " + kind + " " + std::to_string(number));
        ASSERT_FALSE(kind.empty());
        check(kind, number);
        if (HasFailure())
            return;
    }
    expectNewFile();
    close();
}

std::vector<Fault> everyFault()
{
    std::vector<Fault> faults;
    for (OSErr error : {-34, -36, -43, -45, -47, -61})
        for (bool replacing : {false, true})
            for (bool onward : {false, true})
                faults.push_back({error, replacing, onward});
    return faults;
}

class FatalReport : public Making {
protected:
    void makeUntilTheEnd()
    {
        user.answerSave(file());
        user.in(0);
        user.press(1);
        EXPECT_FALSE(guarded([] { MakeCustomRiders(); }));
        EXPECT_TRUE(ended);
    }
};

TEST_F(FatalReport, LeavesNoPartOfAFile)
{
    chooseEverything();
    removeResource('TEXT', 16504);
    makeUntilTheEnd();
    EXPECT_TRUE(traced("(text resource)"));
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(FatalReport, LeavesTheOldFileAlone)
{
    writeOld();
    chooseEverything();
    removeResource('TEXT', 16504);
    makeUntilTheEnd();
    EXPECT_EQ(files(), std::vector<std::string>{"made"});
    EXPECT_EQ(contentsOf(file()), kOldContents);
}

// Without its dialog every report is an alert, and fatal.
TEST_F(FatalReport, GivesTheOldFileItsNameBack)
{
    writeOld();
    chooseEverything();
    removeResource('DLOG', 16129);
    toolbox::faults::failFileCall(toolbox::FileCall::rename, 2, ioErr);
    makeUntilTheEnd();
    EXPECT_EQ(files(), std::vector<std::string>{"made"});
    EXPECT_EQ(contentsOf(file()), kOldContents);
}

INSTANTIATE_TEST_SUITE_P(Each, EveryFault, ::testing::ValuesIn(everyFault()), [](const auto &info) {
    return "Error" + std::to_string(-info.param.error) + (info.param.replacing ? "Replacing" : "New") +
           (info.param.onward ? "Onward" : "Once");
});

}  // namespace
