// What riders.so shows to the outside, read from its own tables.
#include <elf.h>

#include <algorithm>
#include <set>

#include "support/toolbox_test.h"

namespace {

class SharedObject {
public:
    explicit SharedObject(const std::string &path) : bytes_(contentsOf(path)) {}

    // Calls visit with every section of the type.
    template <typename Visit>
    void eachSection(std::uint32_t type, Visit visit) const
    {
        const auto *header = at<Elf64_Ehdr>(0);
        for (int i = 0; i < header->e_shnum; ++i) {
            const auto *section = at<Elf64_Shdr>(header->e_shoff + i * sizeof(Elf64_Shdr));
            if (section->sh_type == type)
                visit(*section, *at<Elf64_Shdr>(header->e_shoff + section->sh_link * sizeof(Elf64_Shdr)));
        }
    }

    template <typename Record>
    const Record *at(std::size_t offset) const
    {
        return reinterpret_cast<const Record *>(bytes_.data() + offset);
    }

    std::string name(const Elf64_Shdr &strings, std::uint64_t offset) const
    {
        return bytes_.data() + strings.sh_offset + offset;
    }

private:
    std::string bytes_;
};

std::set<std::string> exportedNames(const SharedObject &object)
{
    std::set<std::string> names;
    object.eachSection(SHT_DYNSYM, [&](const Elf64_Shdr &symbols, const Elf64_Shdr &strings) {
        for (std::size_t i = 0; i < symbols.sh_size / sizeof(Elf64_Sym); ++i) {
            const auto *symbol = object.at<Elf64_Sym>(symbols.sh_offset + i * sizeof(Elf64_Sym));
            if (symbol->st_shndx != SHN_UNDEF)
                names.insert(object.name(strings, symbol->st_name));
        }
    });
    return names;
}

std::set<std::string> neededLibraries(const SharedObject &object)
{
    std::set<std::string> names;
    object.eachSection(SHT_DYNAMIC, [&](const Elf64_Shdr &section, const Elf64_Shdr &strings) {
        for (std::size_t i = 0; i < section.sh_size / sizeof(Elf64_Dyn); ++i) {
            const auto *entry = object.at<Elf64_Dyn>(section.sh_offset + i * sizeof(Elf64_Dyn));
            if (entry->d_tag == DT_NEEDED)
                names.insert(object.name(strings, entry->d_un.d_val));
        }
    });
    return names;
}

const SharedObject &plugin()
{
    static const SharedObject object(RIDERS_BINARY_DIR "/riders.so");
    return object;
}

}  // namespace

TEST(PluginObject, ExportsMainEntryAndNothingElse)
{
    EXPECT_EQ(exportedNames(plugin()), std::set<std::string>{"main_entry"});
}

TEST(PluginObject, NeedsNoLibraryButTheCxxRuntime)
{
    const std::set<std::string> runtime = {"libstdc++.so.6", "libgcc_s.so.1", "libm.so.6", "libc.so.6"};
    for (const std::string &library : neededLibraries(plugin()))
        EXPECT_TRUE(runtime.count(library)) << library;
    EXPECT_FALSE(neededLibraries(plugin()).empty());
}
