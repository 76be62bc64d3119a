// X's errors about a window that is gone, by the handler that Xlib would call.
#include "desktop/late_errors.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

// The beginning of Xlib's XErrorEvent.
struct XError {
    int type;
    void *display;
    unsigned long resource;
    unsigned long serial;
    unsigned char code;
};
using Handler = int (*)(void *, XError *);

int handledBefore = 0;

class LateErrorsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        xlib_ = dlopen("libX11.so.6", RTLD_NOW);
        ASSERT_NE(xlib_, nullptr);
        setHandler_ = reinterpret_cast<Handler (*)(Handler)>(dlsym(xlib_, "XSetErrorHandler"));
        ASSERT_NE(setHandler_, nullptr);
        handledBefore = 0;
        original_ = setHandler_([](void *, XError *) { return ++handledBefore; });
    }
    void TearDown() override
    {
        setHandler_(original_);
        dlclose(xlib_);
    }

    // Calls the current error handler, as Xlib does.
    void errorArrives(unsigned char code)
    {
        Handler now = setHandler_(nullptr);
        setHandler_(now);
        XError error{.type = 0, .display = nullptr, .resource = 0, .serial = 0, .code = code};
        now(nullptr, &error);
    }

    static constexpr unsigned char badValue = 2, badWindow = 3;
    void *xlib_ = nullptr;
    Handler (*setHandler_)(Handler) = nullptr;
    Handler original_ = nullptr;
};

}  // namespace

TEST_F(LateErrorsTest, OnlyThoseAboutTheClosedWindowPass)
{
    toolbox::desktop::LateErrors errors;
    errorArrives(badWindow);
    EXPECT_EQ(handledBefore, 1) << "the window is still there";
    errors.letPass();
    errorArrives(badWindow);
    EXPECT_EQ(handledBefore, 1);
    errorArrives(badValue);
    EXPECT_EQ(handledBefore, 2) << "another error";
}

TEST_F(LateErrorsTest, HandlerBeforeComesBack)
{
    {
        toolbox::desktop::LateErrors errors;
        errors.letPass();
    }
    errorArrives(badWindow);
    EXPECT_EQ(handledBefore, 1);
}
