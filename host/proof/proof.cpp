#include "proof/proof.h"

#include <tiffio.h>

#include <algorithm>
#include <thread>

#include "io/refusal.h"
#include "proof/facts.h"
#include "io/interruption.h"
#include "proof/output_folder.h"
#include "proof/page_list.h"
#include "proof/plates.h"
#include "proof/prepared_job.h"
#include "proof/progress.h"
#include "proof/report.h"
#include "proof/survey.h"
#include "io/workers.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

void check(const ProofRequest &request)
{
    if (request.dpi < kLeastProofDpi || request.dpi > kMostProofDpi)
        throw io::Refusal(std::to_string(request.dpi) + " dpi is no resolution for a proof; it goes from " +
                      std::to_string(kLeastProofDpi) + " to " + std::to_string(kMostProofDpi));
    if (request.secondsAPage < 1 || request.megabytes < 1)
        throw io::Refusal("the interpreter needs some time and some memory");
}

fs::path placeOf(const ProofRequest &request)
{
    return request.folder.empty() ? fs::path(request.job.stem().string() + "-proof") : request.folder;
}

int coresFor(const ProofRequest &request)
{
    return request.cores > 0 ? request.cores : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

}  // namespace

fs::path proof(const ProofRequest &request)
{
    check(request);
    const std::vector<int> pages = pagesFromText(request.pages);
    kindOfJob(request.job);  // before anything is made
    TIFFSetWarningHandler(nullptr);
    TIFFSetErrorHandler(nullptr);

    io::Interruption interruption;
    OutputFolder folder(placeOf(request));
    const PreparedJob job = prepareJob(request.job, request.riders, folder.work());
    ProofFacts facts{request.job.filename(), request.riders.filename(), static_cast<double>(request.dpi), {}, {}};
    {
        Progress progress;
        const int cores = coresFor(request);
        io::Workers workers(cores);
        const AskedFor riders = request.riders.empty() ? AskedFor{} : askedByRiders(request.riders);
        const Survey survey =
            surveyJob(request, job, pages, folder.work(), folder.path() / kPicturesName, workers, progress);
        Plates plates =
            makePlates({request, job, survey, riders, folder.work(), folder.path(), cores}, workers, progress);
        facts.pages = std::move(plates.pages);
        facts.said = std::move(plates.said);
    }
    writeReport(folder.path() / kPageName, facts);
    io::Interruption::check();
    folder.finish();
    return placeOf(request) / kPageName;
}

}  // namespace riders::proof
