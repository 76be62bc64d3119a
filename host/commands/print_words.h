// What `riders film --printer` says of what it sends.
#pragma once

#include <string>
#include <vector>

#include "film/film_made.h"
#include "film/printing/print_form.h"

namespace riders::commands {

// The jobs; of a dry run also each option.
std::string printInWords(const printing::PrintPlan &plan, const std::vector<printing::JobSent> &sent);
std::string printInJson(const printing::PrintPlan &plan, const std::vector<printing::JobSent> &sent,
                        const film::FilmsMade &made);
// A line for each thing that is not known of the queue.
std::string doubtsInWords(const printing::PrintPlan &plan, const std::string &command);

}  // namespace riders::commands
