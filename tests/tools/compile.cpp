#include "tools/compile.h"

std::string asHex(const std::string &bytes)
{
    std::string hex;
    for (unsigned char byte : bytes) {
        constexpr char digits[] = "0123456789ABCDEF";
        hex += digits[byte >> 4];
        hex += digits[byte & 15];
    }
    return hex;
}

rescomp::Resources Compile::compiled(const std::string &text)
{
    writeFile(folder / "main.res", text);
    return rescomp::compile(folder / "main.res");
}

std::string Compile::bytes(const std::string &text)
{
    rescomp::Resources resources = compiled(text);
    EXPECT_EQ(resources.all().size(), 1u);
    return resources.all().at(0).data;
}

std::string Compile::complaint(const std::string &text)
{
    try {
        compiled(text);
        return "compiled";
    } catch (const rescomp::SourceError &error) {
        std::string message = error.what();
        std::string file = (folder / "main.res").string() + ":";
        return message.starts_with(file) ? message.substr(file.size()) : message;
    }
}
