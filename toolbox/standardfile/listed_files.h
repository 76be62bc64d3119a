// Which files the host leaves out of open dialogs. Private to Standard File.
#pragma once

#include "toolbox/host/listed_files.h"

namespace toolbox::standardfile {

// Empty where it leaves none out.
const ListedFilesProc &listedFiles();

}  // namespace toolbox::standardfile
