// The shared object: what it exports and what it needs.
#include <gtest/gtest.h>

#include <elf.h>

#include <cstring>

#include "support/toolbox_test.h"

namespace {

class PluginFile : public ::testing::Test {
protected:
    void SetUp() override
    {
        bytes = contentsOf(std::filesystem::path(RIDERS_BINARY_DIR) / "riders.so");
        ASSERT_GT(bytes.size(), sizeof(Elf64_Ehdr));
        ASSERT_EQ(bytes.substr(0, 4), ELFMAG);
    }
    template <typename Record>
    Record at(size_t offset) const
    {
        Record record{};
        if (offset + sizeof record <= bytes.size())
            std::memcpy(&record, bytes.data() + offset, sizeof record);
        else
            ADD_FAILURE() << "beyond the file: " << offset;
        return record;
    }
    Elf64_Shdr section(size_t index) const
    {
        return at<Elf64_Shdr>(at<Elf64_Ehdr>(0).e_shoff + index * sizeof(Elf64_Shdr));
    }
    Elf64_Shdr sectionOfType(uint32_t type) const
    {
        for (size_t i = 0; i < at<Elf64_Ehdr>(0).e_shnum; ++i)
            if (section(i).sh_type == type)
                return section(i);
        ADD_FAILURE() << "no section of type " << type;
        return {};
    }
    std::string name(const Elf64_Shdr &owner, size_t offset) const
    {
        return bytes.c_str() + section(owner.sh_link).sh_offset + offset;
    }

    std::string bytes;
};

TEST_F(PluginFile, ExportsMainEntryAndNothingElse)
{
    Elf64_Shdr symbols = sectionOfType(SHT_DYNSYM);
    std::vector<std::string> exported;
    for (size_t i = 0; i < symbols.sh_size / sizeof(Elf64_Sym); ++i) {
        Elf64_Sym symbol = at<Elf64_Sym>(symbols.sh_offset + i * sizeof(Elf64_Sym));
        if (symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL)
            exported.push_back(name(symbols, symbol.st_name));
    }
    EXPECT_EQ(exported, std::vector<std::string>{"main_entry"});
}

TEST_F(PluginFile, NeedsNothingBeyondTheRuntime)
{
    Elf64_Shdr dynamic = sectionOfType(SHT_DYNAMIC);
    int needed = 0;
    for (size_t i = 0; i < dynamic.sh_size / sizeof(Elf64_Dyn); ++i) {
        Elf64_Dyn entry = at<Elf64_Dyn>(dynamic.sh_offset + i * sizeof(Elf64_Dyn));
        if (entry.d_tag != DT_NEEDED)
            continue;
        ++needed;
        std::string library = name(dynamic, entry.d_un.d_val);
        library.resize(library.find(".so"));
        // The last two only in a build with sanitizers.
        const std::vector<std::string> runtime = {"libstdc++", "libm", "libgcc_s", "libc", "libasan", "libubsan"};
        EXPECT_NE(std::find(runtime.begin(), runtime.end(), library), runtime.end()) << library;
    }
    EXPECT_GT(needed, 0);
}

}  // namespace
