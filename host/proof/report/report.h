// The page of a proof.
#pragma once

#include <filesystem>
#include <string>

#include "proof/facts/page_facts.h"

namespace riders::proof {

// Writes the page; the pictures and films it names lie beside it. Throws Refusal.
void writeReport(const std::filesystem::path &file, const ProofFacts &facts);

// The same as text.
std::string reportOf(const ProofFacts &facts);

// What is in every such page, within its first 1024 bytes.
std::string proofMark();

}  // namespace riders::proof
