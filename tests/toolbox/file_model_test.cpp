// Random sequences of file calls, compared with a model in memory.
#include <map>
#include <memory>
#include <random>
#include <set>

#include "files/forks.h"
#include "support/toolbox_test.h"
#include "toolbox/files.h"

using namespace toolbox;
namespace fs = std::filesystem;

namespace {

struct ModelFile {
    std::string data;
    std::string fork;
    OSType type = 'TEXT';
    OSType creator = 'ttxt';
};

struct ModelOpen {
    std::shared_ptr<ModelFile> file;
    std::size_t mark = 0;
    bool writable;
};

class FileModelTest : public ToolboxTest {
public:
    using Step = void (FileModelTest::*)();

    unsigned below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    std::string someName() { return std::string("file ") + static_cast<char>('a' + below(4)); }
    // Text without NUL, so that a file's type does not depend on it.
    std::string someText() { return std::string(below(2000), static_cast<char>('A' + below(26))); }
    bool isOpen(const std::shared_ptr<ModelFile> &file)
    {
        for (auto &[refNum, open] : opened)
            if (open.file == file)
                return true;
        return false;
    }
    bool isOpenForWriting(const std::shared_ptr<ModelFile> &file)
    {
        for (auto &[refNum, open] : opened)
            if (open.file == file && open.writable)
                return true;
        return false;
    }
    // An open file's, or now and then any number.
    int16_t someRefNum()
    {
        if (opened.empty() || below(10) == 0)
            return static_cast<int16_t>(below(50));
        return std::next(opened.begin(), below(static_cast<unsigned>(opened.size())))->first;
    }

    void create()
    {
        std::string name = someName();
        OSType type = below(2) ? 'TEXT' : 'pref';
        bool there = named.contains(name);
        ASSERT_EQ(Create(P(name), 0, 'RIDR', type), there ? dupFNErr : noErr);
        if (!there)
            named[name] = std::make_shared<ModelFile>(ModelFile{"", "", type, 'RIDR'});
    }
    void open()
    {
        std::string name = someName();
        auto permission = static_cast<int8_t>(below(4));
        auto found = named.find(name);
        bool must = permission >= fsWrPerm;
        bool taken = found != named.end() && isOpenForWriting(found->second);
        OSErr expected = found == named.end() ? fnfErr : must && taken ? opWrErr : noErr;
        int16_t refNum = 0;
        ASSERT_EQ(HOpen(0, 0, P(name), permission, &refNum), expected);
        if (expected != noErr)
            return;
        ASSERT_TRUE(numbers.insert(refNum).second) << refNum << " was used before";
        opened[refNum] = {found->second, 0, must || (permission == fsCurPerm && !taken)};
    }
    void close()
    {
        int16_t refNum = someRefNum();
        ASSERT_EQ(FSClose(refNum), opened.erase(refNum) ? noErr : rfNumErr);
    }
    void write()
    {
        int16_t refNum = someRefNum();
        std::string text = someText();
        auto count = static_cast<int32_t>(text.size());
        auto found = opened.find(refNum);
        OSErr expected = found == opened.end() ? rfNumErr : !found->second.writable ? wrPermErr : noErr;
        ASSERT_EQ(FSWrite(refNum, &count, text.data()), expected);
        if (expected != noErr)
            return;
        ModelOpen &open = found->second;
        if (!text.empty())
            open.file->data.resize(std::max(open.file->data.size(), open.mark), '\0');
        open.file->data.replace(std::min(open.mark, open.file->data.size()), text.size(), text);
        open.mark += text.size();
    }
    void read()
    {
        int16_t refNum = someRefNum();
        auto found = opened.find(refNum);
        auto count = static_cast<int32_t>(below(3000));
        std::string bytes(static_cast<std::size_t>(count), '\0');
        std::string expected;
        if (found != opened.end() && found->second.mark < found->second.file->data.size())
            expected = found->second.file->data.substr(found->second.mark, bytes.size());
        OSErr error = found == opened.end() ? rfNumErr : expected.size() < bytes.size() ? eofErr : noErr;
        ASSERT_EQ(FSRead(refNum, &count, bytes.data()), error);
        bytes.resize(static_cast<std::size_t>(count));
        ASSERT_EQ(bytes, expected);
        if (found != opened.end())
            found->second.mark += expected.size();
    }
    void setEnd()
    {
        int16_t refNum = someRefNum();
        auto found = opened.find(refNum);
        // Only truncate, so that no NUL gets into the text.
        std::size_t end = found == opened.end() ? 0 : below(static_cast<unsigned>(found->second.file->data.size() + 1));
        OSErr expected = found == opened.end() ? rfNumErr : !found->second.writable ? wrPermErr : noErr;
        ASSERT_EQ(SetEOF(refNum, static_cast<int32_t>(end)), expected);
        if (expected == noErr) {
            found->second.file->data.resize(end);
            found->second.mark = std::min(found->second.mark, end);
            // Marks of other paths into the file stay where they are; bring
            // them back so that nothing is written beyond the end.
            for (auto &[other, open] : opened)
                if (open.file == found->second.file) {
                    ASSERT_EQ(SetFPos(other, fsFromStart, 0), noErr);
                    open.mark = 0;
                }
        }
    }
    void setMark()
    {
        int16_t refNum = someRefNum();
        auto found = opened.find(refNum);
        auto offset = static_cast<int32_t>(below(3000));
        if (found == opened.end()) {
            ASSERT_EQ(SetFPos(refNum, fsFromStart, offset), rfNumErr);
            return;
        }
        std::size_t end = found->second.file->data.size();
        auto wanted = static_cast<std::size_t>(offset);
        ASSERT_EQ(SetFPos(refNum, fsFromStart, offset), wanted > end ? eofErr : noErr);
        found->second.mark = std::min(wanted, end);
    }
    void remove()
    {
        std::string name = someName();
        auto found = named.find(name);
        OSErr expected = found == named.end() ? fnfErr : isOpen(found->second) ? fBsyErr : noErr;
        ASSERT_EQ(FSDelete(P(name), 0), expected);
        if (expected == noErr)
            named.erase(found);
    }
    void rename()
    {
        std::string from = someName(), to = someName();
        OSErr expected = !named.contains(from) ? fnfErr : named.contains(to) ? dupFNErr : noErr;
        ASSERT_EQ(Rename(P(from), 0, P(to)), expected);
        if (expected != noErr)
            return;
        named[to] = named[from];
        named.erase(from);
    }
    void setInfo()
    {
        std::string name = someName();
        bool plain = below(2);
        FInfo info{plain ? static_cast<OSType>('TEXT') : static_cast<OSType>('PICT'),
                   plain ? static_cast<OSType>('ttxt') : static_cast<OSType>('draw'), 0, {0, 0}, 0};
        auto found = named.find(name);
        ASSERT_EQ(SetFInfo(P(name), 0, &info), found == named.end() ? fnfErr : noErr);
        if (found != named.end()) {
            found->second->type = info.fdType;
            found->second->creator = info.fdCreator;
        }
    }
    void setFork()
    {
        std::string name = someName(), fork = someText();
        ASSERT_EQ(files::writeFork({0, 0, name}, fork), noErr);
        auto &file = named[name];
        if (!file)
            file = std::make_shared<ModelFile>();
        file->fork = fork;
    }

    // What is on disk is what the model has, and nothing else.
    void compare()
    {
        std::size_t count = 0;
        for (const auto &entry : fs::directory_iterator(folder.path()))
            count += entry.path().filename().string().starts_with(".") ? 0 : 1;
        ASSERT_EQ(count, named.size());
        for (auto &[name, file] : named) {
            ASSERT_EQ(contentsOf(folder / name), file->data) << name;
            std::string fork;
            ASSERT_EQ(files::readFork({0, 0, name}, fork), noErr);
            ASSERT_EQ(fork, file->fork) << name;
            FInfo info{};
            ASSERT_EQ(GetFInfo(P(name), 0, &info), noErr);
            ASSERT_EQ(info.fdType, file->type) << name;
            ASSERT_EQ(info.fdCreator, file->creator) << name;
            bool silent = fork.empty() && info.fdType == 'TEXT' && info.fdCreator == 'ttxt';
            ASSERT_EQ(fs::exists(folder / ("._" + name)), !silent) << name;
        }
    }

    std::mt19937 random;
    std::map<std::string, std::shared_ptr<ModelFile>> named;
    std::map<int16_t, ModelOpen> opened;
    std::set<int16_t> numbers;
};

}  // namespace

TEST_F(FileModelTest, RandomCallsAgreeWithTheModel)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    trace::setSink({});
    constexpr Step steps[] = {&FileModelTest::create, &FileModelTest::open,    &FileModelTest::open,
                              &FileModelTest::close,  &FileModelTest::write,   &FileModelTest::write,
                              &FileModelTest::read,   &FileModelTest::setEnd,  &FileModelTest::setMark,
                              &FileModelTest::remove, &FileModelTest::rename,  &FileModelTest::setInfo,
                              &FileModelTest::setFork};
    for (int turn = 0; turn < 1500 && !HasFatalFailure(); ++turn) {
        (this->*steps[below(std::size(steps))])();
        if (turn % 50 == 0)
            compare();
    }
    compare();
    for (auto &[refNum, open] : opened)
        EXPECT_EQ(FSClose(refNum), noErr);
    EXPECT_EQ(leftBehind().openFiles, 0);
}
