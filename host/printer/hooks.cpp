// Three places in PAPPL where it asks nobody: where a job's document is about to be received, where an answer is
// made, and where it goes out. The program defines these functions itself, and so the loader gives them to PAPPL,
// instead of the libraries' own, which they call.
#include "printer/hooks.h"

#include <dlfcn.h>
#include <errno.h>
#include <pappl/pappl.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printer/formats.h"

namespace riders::printer {

// Here, so that whatever uses it is linked with what is below.
JobLine *gJobLine = nullptr;

}  // namespace riders::printer

namespace {

using riders::printer::gJobLine;
using riders::printer::JobKey;

template <class Function>
Function *librarysOwn(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// Of the job that the answer is about, if it is about one: its URI ends in the queue and the number.
std::optional<JobKey> jobOf(ipp_t *answer)
{
    ipp_attribute_t *const number = ippFindAttribute(answer, "job-id", IPP_TAG_INTEGER);
    ipp_attribute_t *const uri = ippFindAttribute(answer, "job-uri", IPP_TAG_URI);
    if (number == nullptr || uri == nullptr)
        return {};
    std::string_view text = ippGetString(uri, 0, nullptr);
    text = text.substr(0, std::min(text.rfind('/'), text.size()));
    return JobKey{std::string(text.substr(text.rfind('/') + 1)), ippGetInteger(number, 0)};
}

// Says no, and why, in place of what the answer says.
void refuse(ipp_t *answer, ipp_status_t status, const std::string &why)
{
    std::vector<ipp_attribute_t *> others;
    for (ipp_attribute_t *each = ippFirstAttribute(answer); each != nullptr; each = ippNextAttribute(answer))
        if (ippGetGroupTag(each) != IPP_TAG_OPERATION ||
            std::string_view(ippGetName(each) == nullptr ? "" : ippGetName(each)) == "status-message")
            others.push_back(each);
    for (ipp_attribute_t *const other : others)
        ippDeleteAttribute(answer, other);
    ippSetStatusCode(answer, status);
    ippAddString(answer, IPP_TAG_OPERATION, IPP_TAG_TEXT, "status-message", nullptr, why.c_str());
}

// PAPPL says of a document that could not be received whole only that, and with whatever reason it finds.
void sayWhyNotReceived(ipp_t *answer)
{
    const char *const message = ippGetString(ippFindAttribute(answer, "status-message", IPP_TAG_TEXT), 0, nullptr);
    const std::string_view said = message == nullptr ? "" : message;
    if (ippGetStatusCode(answer) != IPP_STATUS_ERROR_INTERNAL ||
        (!said.starts_with("Unable to write print file") && !said.starts_with("Unable to create print file")))
        return;
    const riders::printer::ServiceRequest &request = gJobLine->request();
    // What was received is removed by now. The disk is to blame where the largest document would not fit.
    struct statvfs disk = {};
    const bool small = statvfs(request.state.c_str(), &disk) == 0 &&
                       disk.f_bavail * disk.f_frsize < static_cast<unsigned long>(request.mostMegabytes) << 20;
    const bool full =
        said.find(strerror(ENOSPC)) != said.npos || (small && said.find(strerror(EFBIG)) == said.npos);
    if (full)
        refuse(answer, IPP_STATUS_ERROR_TEMPORARY, "The printer's disk is full.");
    else
        refuse(answer, IPP_STATUS_ERROR_REQUEST_ENTITY,
               "The document is larger than " + std::to_string(request.mostMegabytes) + " MB.");
}

}  // namespace

// A job whose document is received waits until it is released. Without that, PAPPL starts it at once, or starts it
// before older ones.
extern "C" int papplJobOpenFile(pappl_job_t *job, char *name, size_t size, const char *folder,
                                const char *extension, const char *mode)
{
    static auto *const own = librarysOwn<decltype(papplJobOpenFile)>("papplJobOpenFile");
    if (extension == nullptr && strcmp(mode, "w") == 0)
        papplJobSetReasons(job, PAPPL_JREASON_JOB_HOLD_UNTIL_SPECIFIED | PAPPL_JREASON_JOB_QUEUED,
                           PAPPL_JREASON_NONE);
    return own(job, name, size, folder, extension, mode);
}

// Whoever only asks whether a job would be taken hears what would be said of its document's format: PAPPL looks at
// that when a document comes.
extern "C" ipp_t *papplClientRespondIPP(pappl_client_t *client, ipp_status_t status, const char *form, ...)
{
    static auto *const own = librarysOwn<decltype(papplClientRespondIPP)>("papplClientRespondIPP");
    ipp_t *const request = papplClientGetRequest(client);
    if (status < IPP_STATUS_ERROR_BAD_REQUEST && ippGetOperation(request) == IPP_OP_VALIDATE_JOB) {
        ipp_attribute_t *const attribute = ippFindAttribute(request, "document-format", IPP_TAG_MIMETYPE);
        const char *const format = ippGetString(attribute, 0, nullptr);
        if (format != nullptr && !riders::printer::mayBeTaken(format)) {
            ipp_t *const answer = own(client, IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED,
                                      "No films can be made of a document of that format.");
            ippAddString(answer, IPP_TAG_UNSUPPORTED_GROUP, IPP_TAG_MIMETYPE, "document-format", nullptr, format);
            return answer;
        }
    }
    std::array<char, 1024> message{};
    va_list values;
    va_start(values, form);
    if (form != nullptr)
        vsnprintf(message.data(), message.size(), form, values);
    va_end(values);
    return form == nullptr ? own(client, status, nullptr) : own(client, status, "%s", message.data());
}

// Called for each answer before anything of it is sent: what it says was accepted is on the disk from here on.
extern "C" size_t ippLength(ipp_t *answer)
{
    static auto *const own = librarysOwn<decltype(ippLength)>("ippLength");
    if (gJobLine != nullptr && ippFindAttribute(answer, "job-id", IPP_TAG_INTEGER) != nullptr) {
        gJobLine->answering();
        gJobLine->settle();
        if (const std::optional<JobKey> key = jobOf(answer))
            if (const auto refused = gJobLine->refusalOf(*key))
                refuse(answer, refused->status, refused->why);
    }
    if (gJobLine != nullptr)
        sayWhyNotReceived(answer);
    return own(answer);
}
