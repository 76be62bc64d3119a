// The kinds of documents that are made into films.
#pragma once

#include <cstddef>
#include <string>

namespace riders::printer {

// MIME types of those that are interpreted as they are.
inline constexpr const char *kFormats[] = {"application/pdf", "application/postscript", "image/x-eps",
                                           "application/eps"};

// Whether a document of that type is made into films; PAPPL itself takes whatever comes. Pages of pixels are
// PostScript by then.
bool isTaken(const std::string &format);

// Whether a client may send a document under that type: pages of pixels too, and whatever shows only when it is here.
bool mayBeTaken(const std::string &format);

// As PAPPL calls it for documents that it does not recognise: their type by their first bytes, or nullptr. EPS
// with a preview before it is recognised.
const char *formatOf(const unsigned char *bytes, std::size_t size, void *);

}  // namespace riders::printer
