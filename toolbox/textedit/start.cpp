#include "session/managers.h"
#include "textedit/record.h"
#include "textedit/scrap.h"

namespace toolbox {

void managers::startTextEdit(const Configuration &)
{
    textedit::startScrap();
    textedit::forgetPresses();
}

void managers::stopTextEdit()
{
    textedit::stopScrap();
}

}  // namespace toolbox
