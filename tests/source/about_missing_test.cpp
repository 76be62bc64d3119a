// What may be missing: resources, memory.
#include "source/about_box.h"
#include "support/sanitized.h"

namespace about {
namespace {

TEST_F(About, MissingDialogIsFatal)
{
    removeResource('DLOG', kAbout);
    dismiss();
    call(kSelectAbout);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 80", " (dlog resource)")));
}

TEST_F(About, EachMissingLineIsFatal)
{
    for (int missing : {2, 5, 3}) {
        std::string list("\0\5", 2);
        for (int index = 1; index <= 5; ++index)
            list += index == missing ? std::string(1, '\0') : std::string("\3abc");
        restartPlugin();
        replaceResource('STR#', 16200, list);
        user.forgetRest();
        user.wait(30);
        dismiss();
        trace.clear();
        call(kSelectAbout);
        EXPECT_TRUE(ended) << missing;
        EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)"))) << missing;
    }
}

TEST_F(About, MissingPicturesLeaveTheBoxEmptyButWorking)
{
    for (int16_t id : {16201, 16202, 16203, 16204})
        removeResource('PICT', id);
    open([&] {
        user.wait(kIntroLong);
        user.press(kPictureArea);
        look([] { EXPECT_EQ(gIconDone, 1); });
    });
}

// Whichever allocation fails: the call returns and nothing stays allocated (call()
// checks), or the process ends.
TEST_F(About, AnyAllocationMayFail)
{
    for (bool onward : {false, true}) {
        for (int nth = 1;; nth += triesLess() ? 3 : 1) {
            restartPlugin();
            user.forgetRest();
            for (int i = 0; i < 6; ++i) {
                user.wait(i == 0 ? 30 : 1);
                user.key("return");
            }
            toolbox::faults::failAllocation(nth, onward);
            call(kSelectAbout);
            bool met = toolbox::faults::met();
            toolbox::faults::clear();
            if (!met)
                break;
            ASSERT_LT(nth, 3000);
        }
    }
    user.forgetRest();
}

}  // namespace
}  // namespace about
