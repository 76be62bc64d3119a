#include "film/forms/pdf_form.h"

#include <cmath>

#include "film/forms/pdf_text.h"
#include "film/forms/group4_file.h"
#include "film/forms/read_file.h"
#include "io/decimal.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::film {

namespace {

// Objects that there are once; numbers are given in this order.
enum Once { kCatalogue = 1, kPages, kInformation, kBookmarks, kOnce = kBookmarks };

constexpr double kLongestPage = 14400;                 // points, in PDF 1.4
constexpr std::uint64_t kLongestFile = 9'999'999'999;  // a table of objects has ten digits for each
constexpr std::string_view kHeader = "%PDF-1.4\n%\xe2\xe3\xcf\xd3\n";  // bytes above 127: not a text

// The hundred-thousandth of a point below: readers take a page that is ever so little longer for a pixel more.
double pointsFor(std::size_t pixels, double dpi)
{
    const double points = static_cast<double>(pixels) * 72 / dpi;
    if (points > kLongestPage)
        throw io::Refusal("a page of a PDF is at most 200 inches long, a film here would be " +
                          io::decimal(points / 72, 1) + ": choose another form");
    return (std::floor(points * 1e5) - 1) / 1e5;
}

std::string points(double length)
{
    return io::decimal(length, 5);
}

std::string reference(int number)
{
    return std::to_string(number) + " 0 R";
}

std::string streamObject(const std::string &dictionary, std::uint64_t length)
{
    return "<< " + dictionary + "/Length " + std::to_string(length) + " >>\nstream\n";
}

}  // namespace

PdfForm::PdfForm(const fs::path &file, const fs::path &work) : OneFileForm(file, work)
{
    offsets_.resize(kOnce);
    write(kHeader);
}

std::unique_ptr<PlateWriter> PdfForm::spool(const PlateSheet &sheet)
{
    pointsFor(sheet.columns, sheet.resolution.across);
    pointsFor(sheet.rows, sheet.resolution.down);
    return group4File(sheet);
}

void PdfForm::add(const PlateSheet &sheet)
{
    const int first = newNumber();
    for (int more = 1; more < 4; ++more)
        newNumber();
    plates_.push_back({.sheet = sheet,
                       .width = pointsFor(sheet.columns, sheet.resolution.across),
                       .height = pointsFor(sheet.rows, sheet.resolution.down),
                       .image = first,
                       .contents = first + 1,
                       .page = first + 2,
                       .bookmark = first + 3});
    addImage(plates_.back());
    addContents(plates_.back());
}

// Pages come last: each names the others of its page.
void PdfForm::addEnd()
{
    std::string pages;
    for (const Plate &plate : plates_) {
        addPage(plate);
        pages += reference(plate.page) + " ";
    }
    for (std::size_t index = 0; index < plates_.size(); ++index)
        addBookmark(index);
    addObject(kPages, "<< /Type /Pages /Count " + std::to_string(plates_.size()) + " /Kids [ " + pages + "] >>");
    addObject(kBookmarks, "<< /Type /Outlines /Count " + std::to_string(plates_.size()) + " /First " +
                              reference(plates_.front().bookmark) + " /Last " +
                              reference(plates_.back().bookmark) + " >>");
    addObject(kInformation,
              "<< /Title " + pdfText(plates_.front().sheet.job) + " /Creator (riders) /Producer (riders) >>");
    addObject(kCatalogue, "<< /Type /Catalog /Pages " + reference(kPages) + " /Outlines " + reference(kBookmarks) +
                              " /PageMode /UseOutlines >>");
    addTable();
}

void PdfForm::write(std::string_view bytes)
{
    io::writeAll(out(), bytes);
    written_ += bytes.size();
}

int PdfForm::newNumber()
{
    offsets_.push_back(0);
    return static_cast<int>(offsets_.size());
}

void PdfForm::beginObject(int number)
{
    if (written_ > kLongestFile)
        throw io::Refusal(out().name() + ": a PDF of more than 10 GB is not possible: choose another form");
    offsets_[static_cast<std::size_t>(number) - 1] = written_;
    write(std::to_string(number) + " 0 obj\n");
}

void PdfForm::addObject(int number, std::string_view content)
{
    beginObject(number);
    write(content);
    write("\nendobj\n");
}

void PdfForm::addImage(const Plate &plate)
{
    const std::string columns = std::to_string(plate.sheet.columns), rows = std::to_string(plate.sheet.rows);
    beginObject(plate.image);
    write(streamObject(
        "/Type /XObject /Subtype /Image /Width " + columns + " /Height " + rows +
            " /BitsPerComponent 1 /ColorSpace /DeviceGray /Filter /CCITTFaxDecode /DecodeParms << /K -1 "
            "/Columns " +
            columns + " /Rows " + rows + " >> ",
        fs::file_size(plate.sheet.file)));
    readFrom(plate.sheet.file, 0, [this](std::string_view piece) { write(piece); });
    write("\nendstream\nendobj\n");
}

void PdfForm::addContents(const Plate &plate)
{
    const std::string paint = points(plate.width) + " 0 0 " + points(plate.height) + " 0 0 cm /Plate Do\n";
    addObject(plate.contents, streamObject("", paint.size()) + paint + "endstream");
}

void PdfForm::addPage(const Plate &plate)
{
    std::string together;
    for (const Plate &other : plates_)
        if (other.sheet.page == plate.sheet.page)
            together += reference(other.page) + " ";
    addObject(plate.page, "<< /Type /Page /Parent " + reference(kPages) + " /MediaBox [ 0 0 " +
                              points(plate.width) + " " + points(plate.height) + " ] /Contents " +
                              reference(plate.contents) + " /Resources << /XObject << /Plate " +
                              reference(plate.image) + " >> >> /SeparationInfo << /Pages [ " + together +
                              "] /DeviceColorant " + pdfName(plate.sheet.plate) + " >> >>");
}

void PdfForm::addBookmark(std::size_t index)
{
    const Plate &plate = plates_[index];
    std::string links;
    if (index > 0)
        links += " /Prev " + reference(plates_[index - 1].bookmark);
    if (index + 1 < plates_.size())
        links += " /Next " + reference(plates_[index + 1].bookmark);
    const std::string title = "Page " + std::to_string(plate.sheet.page) + ", " + plate.sheet.plate;
    addObject(plate.bookmark, "<< /Title " + pdfText(title) + " /Parent " + reference(kBookmarks) + " /Dest [ " +
                                  reference(plate.page) + " /Fit ]" + links + " >>");
}

void PdfForm::addTable()
{
    const std::uint64_t place = written_;
    const std::string count = std::to_string(offsets_.size() + 1);
    write("xref\n0 " + count + "\n0000000000 65535 f \n");
    for (const std::uint64_t offset : offsets_) {
        const std::string digits = std::to_string(offset);
        write(std::string(10 - digits.size(), '0') + digits + " 00000 n \n");
    }
    write("trailer\n<< /Size " + count + " /Root " + reference(kCatalogue) + " /Info " + reference(kInformation) +
          " >>\nstartxref\n" + std::to_string(place) + "\n%%EOF\n");
}

}  // namespace riders::film
