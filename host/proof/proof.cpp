#include "proof/proof.h"

#include <algorithm>
#include <thread>

#include "io/decimal.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "io/workers.h"
#include "looking/look_folder.h"
#include "looking/pictures/page_looks.h"
#include "plates/job/prepared_job.h"
#include "plates/make_plates.h"
#include "plates/measuring/asked_for.h"
#include "plates/page_list.h"
#include "plates/survey/survey.h"
#include "proof/page_proofs.h"
#include "proof/progress.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

void check(const ProofRequest &request)
{
    if (request.dpi < kLeastProofDpi || request.dpi > kMostProofDpi)
        throw io::Refusal(std::to_string(request.dpi) + " dpi is not a resolution for a proof; it goes from " +
                          std::to_string(kLeastProofDpi) + " to " + std::to_string(kMostProofDpi));
    if (request.limits.secondsAPage < 1 || request.limits.megabytes < 1)
        throw io::Refusal("the interpreter needs some time and some memory");
}

int coresFor(const ProofRequest &request)
{
    return request.cores > 0 ? request.cores : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

int inkedPlates(const plates::Survey &survey)
{
    int count = 0;
    for (const plates::SurveyedPage &page : survey.pages)
        count += static_cast<int>(
            std::count_if(page.plates.begin(), page.plates.end(), [](const auto &plate) { return plate.ink; }));
    return count;
}

// Fills the folder with films and pictures.
looking::LookFacts proofPages(const ProofRequest &request, const std::vector<int> &pages,
                              const looking::LookFolder &folder)
{
    const int seconds = request.limits.secondsAPage;
    const fs::path ridersFile = plates::readableAgain(request.riders, folder.work() / "given.riders", seconds);
    const plates::PreparedJob job = plates::prepareJob(request.job, ridersFile, folder.work(), seconds);
    const double dpi = request.dpi;
    const int cores = coresFor(request);
    looking::PageLooks looks(folder.pictures());
    Progress progress(!request.quiet);
    io::Workers workers(cores);
    const plates::AskedFor riders = ridersFile.empty() ? plates::AskedFor{} : plates::askedByRiders(ridersFile);
    const plates::Survey survey =
        plates::surveyJob({.job = job,
                           .pages = pages,
                           .limits = request.limits,
                           .work = folder.work(),
                           .pageEnded = [&] { progress.pageRead(); },
                           .pageSeen = [&](const plates::PageInTints &seen) { looks.take(seen); }},
                          workers);
    progress.expect(static_cast<int>(survey.pages.size()), inkedPlates(survey));
    if (request.loupe)
        folder.makeRoomForTiles();
    PageProofs proofs({survey, looks, riders, dpi, request.mesh, folder.path(), request.loupe}, workers, progress);
    std::vector<std::string> said = plates::makePlates(
        {.job = job,
         .survey = survey,
         .limits = request.limits,
         .dpi = dpi,
         .work = folder.work(),
         .cores = cores,
         .pageRendered = [&] { progress.pageRendered(); },
         .pageRead = [&](plates::RenderedPage page) { proofs.take(std::move(page)); },
         .pageLeftOut = [&](size_t page, const std::string &why) { proofs.leaveOut(page, why); }},
        workers);
    looking::LookFacts facts{
        request.job.filename(), request.riders.filename(), io::decimal(dpi, 0), false, {}, proofs.facts(),
        std::move(said)};
    if (request.loupe && std::any_of(facts.pages.begin(), facts.pages.end(), looking::hasTiles))
        facts.loupe = looking::kLoupeName;
    return facts;
}

}  // namespace

fs::path placeOf(const ProofRequest &request)
{
    return request.folder.empty() ? fs::path(request.job.stem().string() + "-proof") : request.folder;
}

fs::path proof(const ProofRequest &request)
{
    check(request);
    const std::vector<int> pages = plates::pagesFromText(request.pages);
    if (!plates::comesOnce(request.job))
        plates::kindOfJob(request.job);  // before anything is made

    io::Interruption interruption;
    looking::LookFolder folder(placeOf(request));
    const looking::LookFacts facts = proofPages(request, pages, folder);
    folder.writePages(facts);
    io::Interruption::check();
    folder.finish();
    if (request.made)
        request.made(facts);
    const fs::path page = placeOf(request) / looking::kPageName;
    for (const looking::PageFacts &one : facts.pages)
        if (!one.leftOut.empty())
            throw io::Refusal(one.leftOut + "; the rest is in " + page.string());
    return page;
}

}  // namespace riders::proof
