#include "film/forms/postscript_form.h"

#include <algorithm>
#include <cmath>

#include "film/forms/ascii85.h"
#include "film/forms/group4_file.h"
#include "film/forms/read_file.h"
#include "io/decimal.h"

namespace fs = std::filesystem;

namespace riders::film {

extern const std::string_view kPlatePage;

namespace {

constexpr std::size_t kLongestText = 100;  // bytes: a DSC comment has at most 255 characters

// A string of PostScript in 7-bit characters.
std::string postscriptText(const std::string &text)
{
    std::string quoted = "(";
    for (const char letter : text.substr(0, kLongestText)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '(' || letter == ')' || letter == '\\') {
            quoted += std::string("\\") + letter;
        } else if (byte < ' ' || byte > '~') {
            quoted += '\\';
            for (const int shift : {6, 3, 0})
                quoted += static_cast<char>('0' + (byte >> shift & 7));
        } else {
            quoted += letter;
        }
    }
    return quoted + ")";
}

std::string size(double width, double height, int digits)
{
    return io::decimal(width, digits) + " " + io::decimal(height, digits);
}

std::string header(const PlateSheet &first)
{
    return "%!PS-Adobe-3.0\n%%Title: " + postscriptText(first.job) +
           "\n%%Creator: riders\n%%LanguageLevel: 2\n%%DocumentData: Clean7Bit\n%%BoundingBox: (atend)\n"
           "%%HiResBoundingBox: (atend)\n%%Pages: (atend)\n%%PageOrder: Ascend\n%%EndComments\n%%BeginProlog\n" +
           std::string(kPlatePage) + "%%EndProlog\n";
}

std::string pageHead(const PlateSheet &sheet, int number, double width, double height)
{
    return "%%Page: " + postscriptText("page " + std::to_string(sheet.page) + ", " + sheet.plate) + " " +
           std::to_string(number) + "\n%%PageBoundingBox: 0 0 " + size(std::ceil(width), std::ceil(height), 0) +
           "\n%%BeginPageSetup\n<< /PageSize [" + size(width, height, 5) + "] /HWResolution [" +
           size(sheet.resolution.across, sheet.resolution.down, 5) + "] >> setpagedevice\n%%EndPageSetup\n" +
           std::to_string(sheet.columns) + " " + std::to_string(sheet.rows) + " " + size(width, height, 5) +
           " riders_plate\n";
}

}  // namespace

PostscriptForm::PostscriptForm(const fs::path &file, const fs::path &work) : OneFileForm(file, work)
{
}

std::unique_ptr<PlateWriter> PostscriptForm::spool(const PlateSheet &sheet)
{
    return group4File(sheet);
}

void PostscriptForm::add(const PlateSheet &sheet)
{
    const double width = static_cast<double>(sheet.columns) * 72 / sheet.resolution.across;
    const double height = static_cast<double>(sheet.rows) * 72 / sheet.resolution.down;
    width_ = std::max(width_, width);
    height_ = std::max(height_, height);
    if (pages_++ == 0)
        write(header(sheet));
    write(pageHead(sheet, pages_, width, height));
    Ascii85 data([this](std::string_view text) { write(text); });
    readFrom(sheet.file, 0, [&](std::string_view piece) { data.add(piece); });
    data.end();
    write("showpage\n");
}

void PostscriptForm::addEnd()
{
    write("%%Trailer\n%%BoundingBox: 0 0 " + size(std::ceil(width_), std::ceil(height_), 0) +
          "\n%%HiResBoundingBox: 0 0 " + size(width_, height_, 5) + "\n%%Pages: " + std::to_string(pages_) +
          "\n%%EOF\n");
}

void PostscriptForm::write(std::string_view text)
{
    io::writeAll(out(), text);
}

}  // namespace riders::film
