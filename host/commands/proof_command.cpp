#include "commands/proof_command.h"

#include <memory>

#include "commands/mesh_command.h"
#include "commands/standard_output.h"
#include "proof/proof.h"
#include "screens/mesh.h"

namespace riders::commands {

void addProof(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<proof::ProofRequest>();
    const auto mesh = std::make_shared<std::string>();
    CLI::App *command = app.add_subcommand("proof", "Make the plates of a job, measure their dots, and show them");
    command->add_option("job", request->job, "PostScript, EPS or PDF")->required()->type_name("JOB");
    command->add_option("--riders", request->riders, "A riders file to add to the job first")->type_name("FILE");
    command->add_option("--dpi", request->dpi, "Resolution of the films; 1200 when left out")
        ->check(CLI::Range(proof::kLeastProofDpi, proof::kMostProofDpi))
        ->type_name("N");
    command->add_option("--pages", request->pages, "As in 1,3-5; all when left out")->type_name("LIST");
    command->add_option("-o,--output", request->folder, "Where to; the job's name and -proof, here, when left out")
        ->type_name("DIR");
    command
        ->add_option("--seconds", request->limits.secondsAPage,
                     "How long a page may take; all pages may take 100 times that; 300 when left out")
        ->check(CLI::Range(1, 86400))
        ->type_name("N");
    command
        ->add_option("--megabytes", request->limits.megabytes,
                     "How much memory the interpreter may take; 2048 when left out")
        ->check(CLI::Range(64, 1 << 20))
        ->type_name("N");
    command->add_option("--mesh", *mesh, "Threads per inch, or N/cm, of the mesh to print through")
        ->check(perInchBetween(screens::kLeastThreads, screens::kMostThreads, "threads"))
        ->type_name("N");
    command->callback([request, mesh, &chosen] {
        chosen.name = "riders proof";
        chosen.run = [request, mesh] {
            request->mesh = screens::perInchFromText(*mesh).value_or(0);
            return printPath(proof::proof(*request));
        };
    });
}

}  // namespace riders::commands
