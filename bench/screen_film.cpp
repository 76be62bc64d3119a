#include "screen_film.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

Film::Film(const std::filesystem::path &file, double dpi) : dpi_(dpi)
{
    std::ifstream in(file, std::ios::binary);
    std::string magic, comment;
    std::getline(in, magic);
    while (in.peek() == '#')
        std::getline(in, comment);
    in >> width_ >> height_;
    in.get();
    bytes_.assign(std::istreambuf_iterator<char>(in), {});
    if (magic != "P4" ||
        bytes_.size() < (static_cast<std::size_t>(width_) + 7) / 8 * static_cast<std::size_t>(height_))
        throw std::runtime_error("no film: " + file.string());
}

riders::meter::BitPage Film::page() const
{
    return {reinterpret_cast<const std::uint8_t *>(bytes_.data()), width_, height_,
            (static_cast<std::size_t>(width_) + 7) / 8, dpi_};
}

ProcessRun runToFilm(const std::filesystem::path &folder, const std::vector<std::string> &files, double dpi,
                     double width, double height)
{
    std::vector<std::string> command = {"gs",
                                        "-q",
                                        "-dSAFER",
                                        "-dBATCH",
                                        "-dNOPAUSE",
                                        "-sDEVICE=pbmraw",
                                        "-r" + std::to_string(int(dpi)),
                                        "-g" + std::to_string(int(width * dpi)) + "x" +
                                            std::to_string(int(height * dpi)),
                                        "-sOutputFile=" + (folder / "page%d.pbm").string()};
    command.insert(command.end(), files.begin(), files.end());
    const ProcessRun run = runProcess(command, folder / "said");
    if (run.status != 0)
        throw std::runtime_error("gs failed");
    return run;
}
