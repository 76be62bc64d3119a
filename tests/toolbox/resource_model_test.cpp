// The Resource Manager compared with a slow, obvious model of it.
#include "support/toolbox_test.h"

#include <map>
#include <random>

#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace {

struct Kept {
    int16_t id;
    std::string now;               // what its handle holds, or would hold
    std::optional<std::string> stored;
    bool changed = false;
};

// Resources of one type in one file, in the order they were added.
using Model = std::vector<Kept>;

}  // namespace

class ResourceModel : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        HCreateResFile(0, 0, P("file"));
        refNum = HOpenResFile(0, 0, P("file"), 0);
    }
    std::string someBytes() { return std::string(random() % 40, static_cast<char>(random())); }
    static std::string bytesOf(Handle handle)
    {
        return handle ? std::string(*handle, static_cast<size_t>(GetHandleSize(handle))) : "(nil)";
    }

    void step();
    void add();
    void change(Kept &kept);
    void write(Kept &kept);
    void release(size_t which);
    void remove(size_t which);
    void update();
    void reopen();
    void compare();

    unsigned seed = std::random_device{}();
    std::mt19937 random{seed};
    int16_t refNum = -1;
    int16_t nextId = 0;
    Model model;
};

void ResourceModel::add()
{
    std::string bytes = someBytes();
    Handle handle = nullptr;
    ASSERT_EQ(PtrToHand(bytes.data(), &handle, static_cast<Size>(bytes.size())), noErr);
    AddResource(handle, 'TEST', nextId, nullptr);
    model.push_back({nextId++, bytes, std::nullopt, true});
}

void ResourceModel::change(Kept &kept)
{
    kept.now = someBytes();
    kept.changed = true;
    Handle handle = Get1Resource('TEST', kept.id);
    ASSERT_TRUE(handle);
    SetHandleSize(handle, static_cast<Size>(kept.now.size()));
    BlockMove(kept.now.data(), *handle, static_cast<Size>(kept.now.size()));
    ChangedResource(handle);
}

void ResourceModel::write(Kept &kept)
{
    WriteResource(Get1Resource('TEST', kept.id));
    if (kept.changed)
        kept.stored = kept.now;
    kept.changed = false;
}

void ResourceModel::release(size_t which)
{
    Kept &kept = model[which];
    ReleaseResource(Get1Resource('TEST', kept.id));
    kept.changed = false;
    if (kept.stored)
        kept.now = *kept.stored;
    else
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(which));
}

void ResourceModel::remove(size_t which)
{
    Handle handle = Get1Resource('TEST', model[which].id);
    RmveResource(handle);
    DisposeHandle(handle);
    model.erase(model.begin() + static_cast<std::ptrdiff_t>(which));
}

void ResourceModel::update()
{
    UpdateResFile(refNum);
    for (Kept &kept : model) {
        kept.stored = kept.now;
        kept.changed = false;
    }
}

void ResourceModel::reopen()
{
    CloseResFile(refNum);
    refNum = HOpenResFile(0, 0, P("file"), 0);
    ASSERT_NE(refNum, -1);
    for (Kept &kept : model) {
        kept.stored = kept.now;
        kept.changed = false;
    }
}

void ResourceModel::step()
{
    unsigned what = random() % 16;
    if (model.empty() || what < 4)
        return add();
    size_t which = random() % model.size();
    switch (what) {
    case 4:
    case 5:
    case 6:
        return change(model[which]);
    case 7:
    case 8:
        return write(model[which]);
    case 9:
        return release(which);
    case 10:
        return remove(which);
    case 11:
        return update();
    case 12:
        return reopen();
    default:
        Get1Resource('TEST', model[which].id);
    }
}

void ResourceModel::compare()
{
    ASSERT_EQ(Count1Resources('TEST'), static_cast<int16_t>(model.size()));
    for (size_t i = 0; i < model.size(); ++i) {
        Handle handle = Get1IndResource('TEST', static_cast<int16_t>(i + 1));
        EXPECT_EQ(bytesOf(handle), model[i].now);
        EXPECT_EQ(Get1Resource('TEST', model[i].id), handle);
    }
}

TEST_F(ResourceModel, RandomWorkAgreesWithTheModel)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int i = 0; i < 600 && !HasFailure(); ++i) {
        step();
        if (i % 7 == 0)
            compare();
    }
    reopen();
    compare();
    CloseResFile(refNum);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}
