#include "standardfile/listed_files.h"

#include <utility>

namespace toolbox {
namespace {

ListedFilesProc listedProc;

}  // namespace

const ListedFilesProc &standardfile::listedFiles()
{
    return listedProc;
}

void setListedFiles(ListedFilesProc wanted)
{
    listedProc = std::move(wanted);
}

}  // namespace toolbox
