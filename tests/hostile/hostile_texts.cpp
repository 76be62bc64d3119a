#include "hostile/hostile_texts.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

// What might end the text, be executed, or be taken for a comment that programs obey. What is executed makes
// itself known: by the file "made", by what "kept" holds, or by the name hostileCanary.
const std::vector<std::string> kWords = {"(",
                                         ")",
                                         "((",
                                         "))",
                                         "\\",
                                         "\\)",
                                         "\\(",
                                         "%",
                                         "%%",
                                         "{",
                                         "}",
                                         "[",
                                         "]",
                                         "<",
                                         ">",
                                         "<<",
                                         ">>",
                                         "<~",
                                         "~>",
                                         "/",
                                         "//",
                                         " ",
                                         "  ",
                                         "\n",
                                         "\r",
                                         "\r\n",
                                         "\t",
                                         std::string(1, '\0'),
                                         "\x04",
                                         "\x1B",
                                         "\x1B%-12345X",
                                         "\x80\xFF",
                                         " def",
                                         ") def\n",
                                         ") ( ) search pop pop pop cvn def\n",
                                         "/hostileCanary 1 def ",
                                         "userdict /hostileCanary 1 put ",
                                         "systemdict /hostileCanary 1 put ",
                                         "(made) (w) file closefile ",
                                         "(kept) deletefile ",
                                         "(kept) (w) file (x) writestring ",
                                         "(kept) (r) file 99 string readstring pop print ",
                                         "(made) (kept) renamefile ",
                                         "(kept) run ",
                                         "quit ",
                                         "stop ",
                                         "exit ",
                                         "clear ",
                                         "cleartomark ",
                                         "end ",
                                         "pop ",
                                         "showpage ",
                                         "erasepage ",
                                         "initgraphics ",
                                         "grestoreall ",
                                         "save restore ",
                                         "save ",
                                         "clear countdictstack {end} repeat ",
                                         "currentfile flushfile ",
                                         "currentfile closefile ",
                                         "0 setgray 0 0 999 999 rectfill ",
                                         "currentfile 99 string readline ",
                                         "/show {} def ",
                                         "riderText ",
                                         "/riderText () def ",
                                         "/riderFrequency 17 def ",
                                         "\n/riderFont (x) ",
                                         "riderReadText ",
                                         "%end-of-dot-shape%",
                                         "\n%%EndDocument\n",
                                         "\n%%BeginDocument: x\n",
                                         "\n%%EOF\n",
                                         "\n%%Trailer\n",
                                         "\n%%Page: 1 1\n",
                                         "\n%%EndSetup\n",
                                         "\n%%EndProlog\n",
                                         "\n%%EndComments\n",
                                         "\n%%BeginData: 100000 Binary Bytes\n",
                                         "\n%%BeginBinary: 100000\n",
                                         "\n%!PS-Adobe-3.0 EPSF-3.0\n",
                                         "\n%!Zu3_Riders\n",
                                         "\n%Zu3_RidersEnd\n",
                                         "\n%RidersBegin: 9 bytes, line ends added: none\n",
                                         "\n%RidersEnd\n",
                                         "\n/setglobal riderHas {riderGlobal setglobal} if\nend end\n",
                                         "a",
                                         "Proof 3",
                                         "\x8Epreuve \xBD",
                                         "fi",
                                         "\xDE\xDF"};

const std::vector<std::string> kFonts = {
    "Times-Roman", "Times-Bold",     "Times-Italic",      "Times-BoldItalic",
    "Helvetica",   "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique",
    "Courier",     "Courier-Bold",   "Courier-Oblique",   "Courier-BoldOblique"};

const std::vector<std::string> kShapeWords = {"add ",
                                              "sub ",
                                              "mul ",
                                              "div ",
                                              "dup ",
                                              "exch ",
                                              "pop ",
                                              "abs ",
                                              "neg ",
                                              "sqrt ",
                                              "2 ",
                                              "1 ",
                                              "0 ",
                                              "0.5 ",
                                              "180 ",
                                              "cos ",
                                              "sin ",
                                              "3 1 roll ",
                                              "2 copy ",
                                              "1 index ",
                                              "clear ",
                                              "count ",
                                              "mark ",
                                              "cleartomark ",
                                              "[ ",
                                              "] ",
                                              "{",
                                              "}",
                                              "{pop} if ",
                                              "{exch} {pop} ifelse ",
                                              "lt ",
                                              "(",
                                              ")",
                                              "<",
                                              ">",
                                              "<< ",
                                              ">> ",
                                              "stop ",
                                              "exit ",
                                              "end ",
                                              "5 dict begin ",
                                              "/x exch def ",
                                              "x ",
                                              "/hostileCanary 1 def ",
                                              "% comment\n",
                                              "\n",
                                              "\r",
                                              "noSuchName ",
                                              "currentdict ",
                                              "systemdict ",
                                              "countdictstack {end} repeat ",
                                              "{stop} stopped ",
                                              "load ",
                                              "exec ",
                                              "cvx exec ",
                                              "round ",
                                              "=",
                                              "true ",
                                              "null ",
                                              "matrix ",
                                              "currentpoint ",
                                              "moveto ",
                                              "gsave ",
                                              "grestore ",
                                              "newpath ",
                                              "0 setgray ",
                                              "9 setlinewidth ",
                                              "3 3 scale ",
                                              "grestoreall ",
                                              "initgraphics ",
                                              "erasepage ",
                                              "showpage ",
                                              "//showpage exec ",
                                              "save ",
                                              "save restore ",
                                              "quit ",
                                              "(kept) deletefile ",
                                              "(made) (w) file closefile ",
                                              "userdict /hostileCanary 1 put ",
                                              "currentfile closefile ",
                                              "currentfile flushfile ",
                                              "\x80",
                                              std::string(1, '\0')};

}  // namespace

std::string HostileTexts::ofBytes(size_t length)
{
    std::string bytes;
    while (bytes.size() < length)
        bytes += static_cast<char>(below(256));
    return bytes;
}

std::string HostileTexts::ofOne(size_t length)
{
    static const std::string bytes("()\\% {}<>/\n\r\0\x04-W\xFF", 18);
    return std::string(length, bytes[below(bytes.size())]);
}

std::string HostileTexts::ofWords(size_t most)
{
    std::string text;
    for (size_t count = 1 + below(20); count > 0; --count)
        text += kWords[below(kWords.size())];
    return text.substr(0, most);
}

// As much of the mark after the text as fits, once or several times.
std::string HostileTexts::nearlyTheMark(size_t most)
{
    std::string text;
    for (size_t count = 1 + below(3); count > 0; --count)
        text += ofBytes(below(3)) + "%" + std::string(below(2) ? below(most) : most, '-');
    text.resize(std::min(text.size(), most));
    if (below(3) == 0)
        text.replace(text.size() - std::min<size_t>(text.size(), 5), 5, " def\n");
    return text.substr(0, most);
}

std::string HostileTexts::text(size_t most)
{
    const size_t length = below(20) == 0 ? most : below(most + 1);
    switch (below(8)) {
    case 0:
        return {};
    case 1:
    case 2:
        return ofBytes(length);
    case 3:
        return ofOne(length);
    case 4:
        return nearlyTheMark(most);
    default:
        return ofWords(most);
    }
}

HostileAnnotation HostileTexts::annotation()
{
    HostileAnnotation made;
    made.text = text(255);
    made.font = below(2) == 0 ? kFonts[below(kFonts.size())] + std::string(below(3), ' ') : text(63);
    made.size = std::to_string(4 + below(27));
    return made;
}

std::string HostileTexts::shape()
{
    static const std::vector<std::string> good = {"dup mul exch dup mul add 1 exch sub", "exch pop abs neg",
                                                  "pop"};
    std::string body = below(3) == 0 ? good[below(good.size())] + " " : "";
    for (size_t count = below(12); count > 0; --count)
        body.insert(below(2) ? 0 : body.size(), kShapeWords[below(kShapeWords.size())]);
    if (below(10) == 0)
        body += ofBytes(below(50));
    return body;
}
