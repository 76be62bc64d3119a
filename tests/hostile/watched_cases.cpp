#include "hostile/watched_cases.h"

#include <cctype>
#include <sstream>

#include "io/hex_string.h"
#include "support/command.h"
#include "support/documents.h"

namespace fs = std::filesystem;

namespace {

const std::string kKept = "precious";

std::string jobOf(const std::vector<WatchedCase> &cases, WatchedScreen screen)
{
    std::string job = "%!PS\n" + sourceText("tests/hostile/watch.ps");
    if (screen == WatchedScreen::replaced)
        job += "watch /screenStays false put\n";
    job += "0 hostileBegin 0 hostileCheck hostilePaint\n";
    for (size_t i = 0; i < cases.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        job += number + " hostileBegin\n" + cases[i].riders + "\n" + number + " hostileCheck\n";
        if (cases[i].font && cases[i].text)
            job += riders::io::hexString(*cases[i].font) + " " + riders::io::hexString(*cases[i].text) + " hostileRead\n";
        job += "hostilePaint\n";
    }
    return job;
}

std::string pageName(size_t number)
{
    return "page-" + std::to_string(number);
}

}  // namespace

WatchedCases::WatchedCases(const std::vector<WatchedCase> &cases, WatchedScreen screen)
{
    writeFile(folder_ / "job.ps", jobOf(cases, screen));
    writeFile(folder_ / "kept", kKept);
    run("pbmraw", "bits");
    look(cases.size());
    if (!cases.empty() && cases[0].text)
        run("txtwrite", "text");
}

// Afterwards the pages are in the folder of that name.
void WatchedCases::run(const std::string &device, const std::string &page)
{
    fs::create_directory(folder_ / page);
    const CommandResult result = runProgram({"timeout", "600", "gs", "-q", "-dNOSAFER", "-dBATCH", "-dNOPAUSE",
                                             "-r72", "-sDEVICE=" + device, "-sOutputFile=page-none", "job.ps"},
                                            {}, folder_.path());
    said_ = result.out + result.err;
    if (result.status != 0) {
        const std::string said = said_.substr(std::min(said_.find("Error: "), said_.size()));
        findings_.push_back(
            {0, "the interpreter ends with " + std::to_string(result.status) + ": " + said.substr(0, 300)});
    }
    for (const fs::directory_entry &entry : fs::directory_iterator(folder_.path()))
        if (entry.path().filename().string().starts_with("page-"))
            fs::rename(entry.path(), folder_ / page / entry.path().filename());
}

void WatchedCases::look(size_t count)
{
    std::istringstream results(contentsOf(folder_ / "results"));
    size_t good = 0, number = 0;
    std::string state, words;
    while (results >> state >> number && std::getline(results, words))
        if (state == "bad")
            findings_.push_back({number, words});
        else
            good += number == good;
    if (good != count + 1)
        findings_.push_back({std::min(good, count), "this is the first that is not as it should be"});
    if (fs::exists(folder_ / "made") || contentsOf(folder_ / "kept") != kKept ||
        said_.find(kKept) != std::string::npos)
        findings_.push_back({0, "a file was made, changed or read"});
    const WatchedPage without = contentsOf(folder_ / "bits" / pageName(0));
    for (number = 1; number <= count; ++number)
        lookAtPage(number, without);
}

void WatchedCases::lookAtPage(size_t number, const WatchedPage &without)
{
    const WatchedPage page = contentsOf(folder_ / "bits" / pageName(number));
    const size_t size = kWatchedRow * kWatchedRows;
    if (page.size() != without.size() || page.size() < size) {
        findings_.push_back({number, "there is no page"});
        return;
    }
    const size_t start = page.size() - size, foot = start + kWatchedRow * kWatchedFoot;
    if (page.compare(start, foot - start, without, start, foot - start) != 0)
        findings_.push_back({number, "what the job paints has changed"});
    for (size_t i = foot; i < page.size(); ++i)
        if (without[i] & ~page[i]) {
            findings_.push_back({number, "something at the foot has gone"});
            break;
        }
}

std::string WatchedCases::letters(size_t number) const
{
    std::string letters;
    for (const char c : contentsOf(folder_ / "text" / pageName(number)))
        if (!std::isspace(static_cast<unsigned char>(c)))
            letters += c;
    return letters;
}
