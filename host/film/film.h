// `riders film`: from a job to its films.
//
// The interpreter paints the pages in continuous tone; they are screened here, each plate with a screen of its
// own.
#pragma once

#include "film/film_made.h"
#include "film/request.h"

namespace riders::film {

// Makes the films page by page; `made` is filled while they are made, so that it holds what was done if this
// throws. What is in it is whole and in place. Throws Refusal, Interrupted, and what file systems throw; a
// film that was not finished then is not there, or the earlier one is.
void makeFilms(const FilmRequest &request, FilmsMade &made);

}  // namespace riders::film
