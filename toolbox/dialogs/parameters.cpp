#include "dialogs/parameters.h"

#include "toolbox/dialogs.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"

namespace toolbox::dialogs {
namespace {

std::string parameters[4];

}  // namespace

std::string substituted(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        int number = text[i] == '^' && i + 1 < text.size() ? text[i + 1] - '0' : -1;
        if (number < 0 || number > 3) {
            result += text[i];
            continue;
        }
        result += parameters[number];
        ++i;
    }
    return result;
}

void forgetParameters()
{
    for (std::string &parameter : parameters)
        parameter.clear();
}

}  // namespace toolbox::dialogs

void ParamText(ConstStr255Param p0, ConstStr255Param p1, ConstStr255Param p2, ConstStr255Param p3)
{
    using namespace toolbox;
    ConstStr255Param given[] = {p0, p1, p2, p3};
    std::string texts[4];
    for (int i = 0; i < 4; ++i) {
        if (given[i])
            dialogs::parameters[i] = std::string(pascalView(given[i]));
        texts[i] = trace::quoted(utf8FromRoman(dialogs::parameters[i]));
    }
    trace::line("params %s %s %s %s", texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
}
