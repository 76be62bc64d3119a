#include "host/proof_support.h"

#include <tiffio.h>

#include <algorithm>
#include <bit>

namespace fs = std::filesystem;

riders::proof::ProofRequest ProofTest::request(const std::string &job, const std::string &name)
{
    writeFile(folder / name, job);
    riders::proof::ProofRequest request;
    request.job = folder / name;
    request.folder = out;
    request.dpi = 300;
    request.cores = 1;
    return request;
}

std::string ProofTest::proofOf(const riders::proof::ProofRequest &request)
{
    try {
        EXPECT_EQ(riders::proof::proof(request), request.folder / "proof.html");
        return "done";
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
}

std::string ProofTest::pageOf(const std::string &job)
{
    EXPECT_EQ(proofOf(request(job)), "done");
    return contentsOf(out / "proof.html");
}

std::vector<std::string> ProofTest::files(const fs::path &of) const
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(of))
        if (!entry.is_directory())
            names.push_back(fs::relative(entry.path(), of));
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> ProofTest::left() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder.path()))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string smallPage(const std::string &painting, double lpi, double angle)
{
    return "<</PageSize [144 144]>> setpagedevice\n" + std::to_string(lpi) + " " + std::to_string(angle) +
           " {dup mul exch dup mul add 1 exch sub} setscreen\n" + painting + "\nshowpage\n";
}

std::string smallJob(const std::vector<std::string> &pages)
{
    std::string job = "%!PS\n";
    for (const std::string &page : pages)
        job += page;
    return job;
}

double Film::ink() const
{
    int count = 0;
    for (const std::uint8_t byte : bits.bits)
        count += std::popcount(byte);
    return count / (static_cast<double>(bits.width) * bits.height);
}

Film readFilm(const fs::path &file)
{
    Film film;
    TIFF *tiff = TIFFOpen(file.c_str(), "r");
    if (!tiff)
        throw std::runtime_error(file.string() + " is no TIFF");
    std::uint32_t width = 0, height = 0;
    std::uint16_t compression = 0, photometric = 0, unit = 0;
    float across = 0, down = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff, TIFFTAG_COMPRESSION, &compression);
    TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric);
    TIFFGetField(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
    TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &across);
    TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &down);
    film.bits = riders::plates::BitPlate(static_cast<int>(width), static_cast<int>(height));
    for (int y = 0; y < film.bits.height; ++y)
        TIFFReadScanline(tiff, film.bits.row(y), static_cast<std::uint32_t>(y));
    TIFFClose(tiff);
    film.compression = compression;
    film.photometric = photometric;
    film.dpi = unit == RESUNIT_INCH && across == down ? across : 0;
    return film;
}
