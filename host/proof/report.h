// The page of a proof.
#pragma once

#include <filesystem>
#include <string>

#include "proof/facts.h"

namespace riders::proof {

// Writes the page; the pictures and films it names lie beside it. Throws Refusal.
void writeReport(const std::filesystem::path &file, const ProofFacts &facts);

// The same as text.
std::string reportOf(const ProofFacts &facts);

// A text as it stands, in an element or a quoted attribute: & < > " ' are
// written as entities; otherwise see plainText.
std::string escaped(const std::string &text);

}  // namespace riders::proof
