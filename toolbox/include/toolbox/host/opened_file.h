// What the user last opened, for hosts.
#pragma once

#include <filesystem>
#include <string>

namespace toolbox {

struct OpenedFile {
    std::string name;            // as the dialog showed it, UTF-8
    std::filesystem::path path;  // absolute; empty where no file has been opened
};

// The file that was chosen last in an open dialog of this session, whether it could be read then or not.
const OpenedFile &lastOpenedFile();

}  // namespace toolbox
