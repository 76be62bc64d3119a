#include "printer/job_attributes.h"

#include <array>
#include <ctime>
#include <mutex>
#include <set>

#include "io/refusal.h"

namespace riders::printer {
namespace {

std::string textOf(ipp_attribute_t *attribute)
{
    if (attribute == nullptr)
        return {};
    std::array<char, 2048> text{};
    ippAttributeString(attribute, text.data(), text.size());
    return text.data();
}

// A yes of IPP's.
std::string choiceFrom(ipp_attribute_t *attribute)
{
    if (ippGetValueTag(attribute) == IPP_TAG_BOOLEAN)
        return ippGetBoolean(attribute, 0) != 0 ? "yes" : "no";
    return textOf(attribute);
}

void choose(JobRecord &record, const char *name, const std::string &value)
{
    try {
        record.choices.set(name, value, ChosenBy::job);
    } catch (const io::Refusal &refusal) {
        record.message += (record.message.empty() ? "" : "; ") + refusal.message;
    }
}

std::string resolutionOf(pappl_job_t *job)
{
    ipp_attribute_t *const attribute = papplJobGetAttribute(job, "printer-resolution");
    if (attribute == nullptr || ippGetValueTag(attribute) != IPP_TAG_RESOLUTION)
        return {};
    int down = 0;
    ipp_res_t units = IPP_RES_PER_INCH;
    const int across = ippGetResolution(attribute, 0, &down, &units);
    return across == down ? std::to_string(across) : std::to_string(across) + "x" + std::to_string(down);
}

std::string pagesOf(pappl_job_t *job)
{
    ipp_attribute_t *const attribute = papplJobGetAttribute(job, "page-ranges");
    if (attribute == nullptr || ippGetValueTag(attribute) != IPP_TAG_RANGE)
        return {};
    std::string pages;
    for (int i = 0; i < ippGetCount(attribute); ++i) {
        int last = 0;
        const int first = ippGetRange(attribute, i, &last);
        pages += (pages.empty() ? "" : ",") + std::to_string(first) + "-" + std::to_string(last);
    }
    return pages;
}

std::string orNothing(const char *text)
{
    return text == nullptr ? "" : text;
}

}  // namespace

JobKey keyOf(pappl_job_t *job)
{
    return {papplPrinterGetName(papplJobGetPrinter(job)), papplJobGetID(job)};
}

const char *keptText(const std::string &text)
{
    static std::mutex mutex;
    static std::set<std::string> texts;
    const std::lock_guard lock(mutex);
    return texts.insert(text).first->c_str();
}

JobRecord recordOf(pappl_job_t *job)
{
    JobRecord record{.key = keyOf(job),
                     .title = orNothing(papplJobGetName(job)),
                     .user = orNothing(papplJobGetUsername(job)),
                     .format = orNothing(papplJobGetFormat(job)),
                     .holdUntil = textOf(papplJobGetAttribute(job, "job-hold-until")),
                     .pages = pagesOf(job),
                     .accepted = std::time(nullptr)};
    for (const ChoiceKind &kind : choiceKinds())
        if (ipp_attribute_t *const attribute =
                kind.attribute == nullptr ? nullptr : papplJobGetAttribute(job, kind.attribute))
            choose(record, kind.name, choiceFrom(attribute));
    choose(record, "dpi", resolutionOf(job));
    return record;
}

}  // namespace riders::printer
