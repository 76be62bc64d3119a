#include "hostile/watched_cases.h"

#include <cctype>
#include <cstdio>
#include <sstream>

#include "support/command.h"
#include "support/documents.h"

namespace fs = std::filesystem;

namespace {

const std::string kKept = "precious";

std::string hexString(const std::string &bytes)
{
    std::string text = "<";
    for (const char c : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
        text += digits;
    }
    return text + ">";
}

std::string jobOf(const std::vector<WatchedCase> &cases)
{
    std::string job = "%!PS\n" + sourceText("tests/hostile/watch.ps") + "0 hostileBegin 0 hostileCheck hostilePaint\n";
    for (size_t i = 0; i < cases.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        job += number + " hostileBegin\n" + cases[i].riders + "\n" + number + " hostileCheck\n";
        if (cases[i].font && cases[i].text)
            job += hexString(*cases[i].font) + " " + hexString(*cases[i].text) + " hostileRead\n";
        job += "hostilePaint\n";
    }
    return job;
}

std::string pageName(size_t number)
{
    return "page-" + std::to_string(number);
}

}  // namespace

WatchedCases::WatchedCases(const std::vector<WatchedCase> &cases)
{
    writeFile(folder_ / "job.ps", jobOf(cases));
    writeFile(folder_ / "kept", kKept);
    run("pbmraw", "bits");
    look(cases.size());
    run("txtwrite", "text");
}

// Afterwards the pages are in the folder of that name.
void WatchedCases::run(const std::string &device, const std::string &page)
{
    fs::create_directory(folder_ / page);
    const CommandResult result =
        runProgram({"timeout", "300", "gs", "-q", "-dNOSAFER", "-dBATCH", "-dNOPAUSE", "-r72", "-sDEVICE=" + device,
                    "-sOutputFile=page-none", "job.ps"},
                   {}, folder_.path());
    said_ = result.out + result.err;
    if (result.status != 0)
        findings_.push_back("0 the interpreter ends with " + std::to_string(result.status) + ": " +
                            said_.substr(said_.size() - std::min<size_t>(said_.size(), 300)));
    for (const fs::directory_entry &entry : fs::directory_iterator(folder_.path()))
        if (entry.path().filename().string().starts_with("page-"))
            fs::rename(entry.path(), folder_ / page / entry.path().filename());
}

void WatchedCases::look(size_t count)
{
    std::istringstream results(contentsOf(folder_ / "results"));
    size_t good = 0;
    for (std::string line; std::getline(results, line);)
        if (line == "ok " + std::to_string(good))
            ++good;
        else
            findings_.push_back(line.substr(line.find(' ') + 1));
    if (good != count + 1)
        findings_.push_back(std::to_string(good) + " is the last but one that was gone through");
    if (fs::exists(folder_ / "made") || contentsOf(folder_ / "kept") != kKept ||
        said_.find(kKept) != std::string::npos)
        findings_.push_back("0 a file was made, changed or read");
    const WatchedPage without = contentsOf(folder_ / "bits" / pageName(0));
    for (size_t number = 1; number <= count; ++number)
        lookAtPage(number, without);
}

void WatchedCases::lookAtPage(size_t number, const WatchedPage &without)
{
    const WatchedPage page = contentsOf(folder_ / "bits" / pageName(number));
    const size_t size = kWatchedRow * kWatchedRows;
    if (page.size() != without.size() || page.size() < size) {
        findings_.push_back(std::to_string(number) + " there is no page");
        return;
    }
    const size_t start = page.size() - size;
    if (page.compare(start, kWatchedRow * kWatchedFoot, without, start, kWatchedRow * kWatchedFoot) != 0)
        findings_.push_back(std::to_string(number) + " what the job paints has changed");
    for (size_t i = start + kWatchedRow * kWatchedFoot; i < page.size(); ++i)
        if (without[i] & ~page[i]) {
            findings_.push_back(std::to_string(number) + " something at the foot has gone");
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
