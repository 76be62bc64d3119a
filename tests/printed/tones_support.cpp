#include "printed/tones_support.h"

#include <sstream>

#include "io/interruption.h"
#include "io/refusal.h"
#include "plates/files/plate_files.h"
#include "plates/files/plate_names.h"
#include "plates/job/prepared_job.h"
#include "support/command.h"

namespace fs = std::filesystem;
namespace plates = riders::plates;

void KeepingReader::beginPage(const plates::TonePage &page)
{
    EXPECT_TRUE(pages.empty() || pages.back().whole);
    EXPECT_EQ(page.plates.size(), page.ink.size());
    pages.push_back({page, {}, false});
    for (const std::string &name : page.plates)
        pages.back().plates[name] = {static_cast<int>(page.columns), static_cast<int>(page.rows), {}};
    EXPECT_EQ(pages.back().plates.size(), page.plates.size()) << "two of one name";
    next_ = 0;
}

void KeepingReader::row(std::size_t y, const std::vector<const std::uint8_t *> &tones)
{
    TonesOfPage &to = pages.back();
    EXPECT_EQ(y, next_++);
    ASSERT_EQ(tones.size(), to.page.plates.size());
    for (size_t i = 0; i < tones.size(); ++i) {
        std::vector<std::uint8_t> &ink = to.plates[to.page.plates[i]].ink;
        ink.insert(ink.end(), tones[i], tones[i] + to.page.columns);
    }
}

void KeepingReader::endPage()
{
    EXPECT_EQ(next_, pages.back().page.rows);
    pages.back().whole = true;
}

std::vector<TonesOfPage> TonesTest::streamed(const fs::path &job, const TonesAsked &asked)
{
    return streamed(job, job, asked);
}

const SurveyedJob &TonesTest::surveyed(const fs::path &job, const TonesAsked &asked)
{
    fs::create_directories(work / "tones");
    const auto [found, isNew] = surveyed_.try_emplace({contentsOf(job), asked.pages});
    SurveyedJob &made = found->second;
    if (!isNew)
        return made;
    made.job = plates::prepareJob(job, {}, work);
    riders::io::Workers workers(2);
    made.survey = plates::surveyJob({.job = made.job,
                                     .pages = asked.pages,
                                     .limits = asked.limits,
                                     .work = work,
                                     .pageEnded = [] {},
                                     .pageSeen = [](const plates::PageInTints &) {},
                                     .mostSpotInks = plates::kMostSurveyedInks},
                                    workers);
    return made;
}

plates::TonesRun TonesTest::runOf(const plates::PreparedJob &job, const plates::Survey &survey,
                                  const TonesAsked &asked) const
{
    std::vector<int> pages;
    for (const plates::SurveyedPage &page : survey.pages)
        pages.push_back(page.number);
    return {job,          survey,        pages, asked.across, asked.down, asked.rotation, asked.interpreterTone,
            asked.limits, work / "tones"};
}

std::vector<TonesOfPage> TonesTest::streamed(const fs::path &job, const fs::path &other, const TonesAsked &asked)
{
    KeepingReader reader;
    refused.clear();
    try {
        riders::io::Interruption interruption;
        const SurveyedJob &made = surveyed(other, asked);
        const plates::PreparedJob run = plates::prepareJob(job, {}, work);
        const plates::TonesRun tones = runOf(run, made.survey, asked);
        plates::streamTones(tones, plates::boxesOf(tones), reader);
    } catch (const riders::io::Refusal &refusal) {
        refused = refusal.message;
    }
    EXPECT_TRUE(fs::is_empty(work / "tones"));
    fs::remove_all(work);
    return reader.pages;
}

std::vector<TonesOfPage> TonesTest::plain(const fs::path &job, const TonesAsked &asked)
{
    const fs::path made = folder / "plain";
    fs::remove_all(made);
    fs::create_directory(made);
    std::ostringstream resolution, device;
    resolution << "-r" << asked.across << "x" << asked.down;
    device << "<< /LeadingEdge " << asked.rotation / 90 << " /Install {{} settransfer}"
           << " >> setpagedevice";
    const CommandResult run =
        runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep", "-sCompression=none",
                    "-dMaxSpots=" + std::to_string(asked.plainInks), resolution.str(), "-sOutputFile=plain/%d.tif",
                    "-c", device.str(), "-f", job},
                   "", folder.path());
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    std::vector<TonesOfPage> pages;
    for (int page = 1; fs::exists(made / (std::to_string(page) + ".tif")); ++page) {
        pages.push_back({});
        pages.back().page.number = page;
        for (const plates::PlateFile &file : plates::plateFiles(made, page))
            pages.back().plates[plates::plateNameFrom(file.plate, 0)] = plates::readTints(file.file);
    }
    return pages;
}

void expectAlike(const std::vector<TonesOfPage> &streamed, const std::vector<TonesOfPage> &plain)
{
    ASSERT_EQ(streamed.size(), plain.size());
    for (size_t i = 0; i < plain.size(); ++i) {
        const std::string page = "page " + std::to_string(plain[i].page.number);
        EXPECT_EQ(streamed[i].page.number, plain[i].page.number);
        EXPECT_TRUE(streamed[i].whole) << page;
        // An ink that was named on a page not asked for is met, too.
        for (const auto &[name, tints] : streamed[i].plates)
            EXPECT_TRUE(plain[i].plates.count(name) != 0 || !tints.hasInk()) << page << ", " << name;
        for (const auto &[name, tints] : plain[i].plates) {
            ASSERT_EQ(streamed[i].plates.count(name), 1u) << page << ", " << name;
            const plates::TintPlate &found = streamed[i].plates.at(name);
            EXPECT_EQ(found.width, tints.width) << page << ", " << name;
            EXPECT_EQ(found.height, tints.height) << page << ", " << name;
            EXPECT_TRUE(found.ink == tints.ink) << page << ", " << name;
        }
    }
}

void TonesTest::expectPlain(const fs::path &job, const TonesAsked &asked)
{
    const std::vector<TonesOfPage> found = streamed(job, asked);
    EXPECT_EQ(refused, "");
    std::vector<TonesOfPage> wanted;
    for (TonesOfPage &page : plain(job, asked))
        if (asked.pages.empty() || std::count(asked.pages.begin(), asked.pages.end(), page.page.number) != 0)
            wanted.push_back(std::move(page));
    EXPECT_FALSE(wanted.empty());
    expectAlike(found, wanted);
}
