#include "html/template.h"

#include <algorithm>
#include <stdexcept>

#include "io/plain_text.h"

namespace riders::html {
namespace {

constexpr std::string_view kOpening = "{{", kClosing = "}}";

const std::string &valueOf(std::string_view name, Fillings fillings)
{
    const auto *const found = std::find_if(fillings.begin(), fillings.end(),
                                           [name](const Filling &filling) { return filling.name == name; });
    if (found == fillings.end())
        throw std::logic_error("nothing to fill in for " + std::string(name));
    return found->value;
}

// Between the tags, without the line end after the first.
std::string_view templateOf(std::string_view file, std::string_view id)
{
    const std::string tag = "<template id=\"" + std::string(id) + "\">";
    const size_t at = file.find(tag);
    if (at == std::string_view::npos)
        throw std::logic_error("no template " + std::string(id));
    std::string_view rest = file.substr(at + tag.size());
    rest = rest.substr(0, rest.find("</template>"));
    return rest.starts_with('\n') ? rest.substr(1) : rest;
}

}  // namespace

std::string filled(std::string_view text, Fillings fillings)
{
    std::string result;
    for (size_t at; (at = text.find(kOpening)) != std::string_view::npos;) {
        const size_t end = text.find(kClosing, at);
        const std::string &value =
            valueOf(text.substr(at + kOpening.size(), end - at - kOpening.size()), fillings);
        result += text.substr(0, at);
        const bool beginsLine = result.empty() || result.back() == '\n';
        result += value;
        text.remove_prefix(end + kClosing.size());
        if (beginsLine && (value.empty() || value.back() == '\n') && text.starts_with('\n'))
            text.remove_prefix(1);
    }
    return result += text;
}

std::string part(std::string_view file, std::string_view id, Fillings fillings)
{
    return filled(templateOf(file, id), fillings);
}

std::string escaped(const std::string &text)
{
    std::string html;
    for (const char c : io::plainText(text)) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

}  // namespace riders::html
