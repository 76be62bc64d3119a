// The files of films: job_p01_Cyan.tif.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::film {

// One name for each plate of a page, no two of them alike even where upper and lower case are the same. The page
// has as many digits as the job's last page, two at least; of a plate's name, letters, digits, points, hyphens and
// signs such as _ + stay, of the job's everything. None is longer than file systems allow.
std::vector<std::string> filmNames(const std::filesystem::path &job, int page, int lastPage,
                                   const std::vector<std::string> &plates, const std::string &extension);

// The job's name without its folder and what stands after the last point.
std::string jobTitle(const std::filesystem::path &job);

}  // namespace riders::film
