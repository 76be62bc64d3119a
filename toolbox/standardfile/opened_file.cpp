#include "standardfile/opened_file.h"

#include <utility>

namespace toolbox {
namespace {

OpenedFile opened;

}  // namespace

void standardfile::rememberOpened(OpenedFile file)
{
    opened = std::move(file);
}

const OpenedFile &lastOpenedFile()
{
    return opened;
}

}  // namespace toolbox
