// Where dialogs appear, and how a person moves them.
#include "support/dialog_resources.h"
#include "support/toolbox_test.h"
#include "toolbox/dialogs.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/user.h"

namespace {

constexpr int16_t movedID = 500;
enum { movedOk = 1, padItem = 2 };

class DialogPlaces : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        openNewResourceFile(folder.path());
        ItemList().item(ctrlItem + btnCtrl, 200, 100, 70, 20, "OK").item(userItem, 0, 0, 10, 10).add(movedID);
        addDialog(movedID, 100, 100, 300, 130, true, movableDBoxProc);
    }

    // Lets the user act with the dialog until it is confirmed.
    void run(const std::function<void()> &steps)
    {
        dialog = GetNewDialog(movedID, nullptr, reinterpret_cast<WindowPtr>(-1));
        steps();
        user.key("return");
        runUntil(dialog, movedOk);
    }
    void expectCorner(int h, int v, const std::string &when)
    {
        user.then([=, this] {
            GrafPtr before;
            GetPort(&before);
            SetPort(dialog);
            Point corner{0, 0};
            LocalToGlobal(&corner);
            SetPort(before);
            EXPECT_EQ(corner.h, h) << when;
            EXPECT_EQ(corner.v, v) << when;
        });
    }
    void takePicture(toolbox::Picture &into)
    {
        user.then([&into] { into = toolbox::displayPicture(0); });
    }
    static int differing(const toolbox::Picture &a, const toolbox::Picture &b)
    {
        int count = 0;
        for (std::size_t i = 0; i < a.pixels.size(); ++i)
            count += a.pixels[i] != b.pixels[i];
        return count;
    }

    // A 'DLOG' with a position word after its title.
    static void addPlaced(int16_t number, int position)
    {
        ResourceBytes bytes;
        bytes.rect(0, 0, 200, 100).word(dBoxProc).byte(1).byte(0).byte(0).byte(0).longWord(0).word(movedID);
        bytes.pascal("").evenly().word(position).add('DLOG', number);
    }

    toolbox::ScriptedUser user{machine};
    DialogPtr dialog = nullptr;
    toolbox::Picture before, held, back, after;
};

}  // namespace

TEST_F(DialogPlaces, AnOutlineShowsWhereADraggedDialogWillBe)
{
    run([this] {
        takePicture(before);
        user.pressAt({85, 200});
        user.moveTo({185, 260});
        takePicture(held);
        user.moveTo({85, 200});
        takePicture(back);
        user.moveTo({185, 260});
        user.release();
        expectCorner(160, 200, "dragged by 60, 100");
    });
    EXPECT_GT(differing(before, held), 200) << "a grey frame";
    EXPECT_LT(differing(before, held), 1000) << "no more than a frame";
    auto pixel = [](const toolbox::Picture &shown, int h, int v) {
        return shown.pixels[static_cast<std::size_t>(v * shown.width + h)];
    };
    const int left = 100 - 5 + 60, top = 200;
    EXPECT_NE(pixel(held, left, top), pixel(held, left, top + 1)) << "every other pixel of its left edge";
    EXPECT_EQ(pixel(held, left, top), pixel(held, left, top + 2));
    EXPECT_EQ(pixel(held, 150, 150), 0xFFFFFFu) << "the dialog itself has not moved";
}

TEST_F(DialogPlaces, TheOutlineLeavesNothingBehind)
{
    run([this] {
        takePicture(before);
        user.pressAt({85, 200});
        for (int16_t v = 100; v < 400; v = static_cast<int16_t>(v + 37))
            user.moveTo({v, static_cast<int16_t>(v + 50)});
        user.moveTo({85, 200});
        user.release();
        takePicture(after);
        expectCorner(100, 100, "released where it was pressed");
    });
    EXPECT_EQ(differing(before, after), 0);
}

TEST_F(DialogPlaces, ADialogIsNotDroppedOnTheMenuBar)
{
    run([this] {
        user.drag({85, 200}, {5, 200});
        expectCorner(100, 100, "its title bar could not be pressed there");
        user.drag({85, 200}, {25, 200});
        expectCorner(100, 40, "just below");
    });
}

TEST_F(DialogPlaces, DisplaysThatChangeDuringADragAreRedrawn)
{
    run([this] {
        user.pressAt({85, 200});
        user.moveTo({185, 260});
        user.setDepth(1);
        user.moveTo({90, 205});
        user.release();
        user.then([] {
            toolbox::Picture shown = toolbox::displayPicture(0);
            int gray = 0;
            for (int v = 300; v < 340; ++v)
                gray += shown.pixels[static_cast<std::size_t>(v * shown.width + 155)] ==
                        shown.pixels[static_cast<std::size_t>(v * shown.width + 157)];
            EXPECT_EQ(gray, 40) << "nothing is left of the outline in the desktop's pattern";
        });
    });
}

TEST_F(DialogPlaces, ADialogThatCannotBeDraggedIsBroughtOntoTheDisplay)
{
    auto shownAt = [this](int procID, int16_t h, int16_t v) {
        static int16_t number = 700;
        addDialog(++number, h, v, 300, 130, true, procID);
        trace.clear();
        DisposDialog(GetNewDialog(number, nullptr, reinterpret_cast<WindowPtr>(-1)));
        const std::string mark = "shown at ";
        for (const std::string &line : trace)
            if (auto at = line.find(mark); at != std::string::npos)
                return line.substr(at + mark.size(), line.rfind(' ') - at - mark.size());
        return std::string("nowhere");
    };
    ItemList().add(701);
    for (int16_t number = 702; number < 707; ++number)
        ItemList().add(number);
    EXPECT_EQ(shownAt(movableDBoxProc, 500, 400), "500,400") << "its title can be dragged";
    EXPECT_EQ(shownAt(movableDBoxProc, 900, 200), "900,200") << "where the program wants it";
    EXPECT_EQ(shownAt(dBoxProc, 100, 100), "100,100");
    EXPECT_EQ(shownAt(dBoxProc, 500, 400), "332,342") << "8 pixels of frame; nothing to drag it by";
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}});
    EXPECT_EQ(shownAt(dBoxProc, 500, 100), "500,100") << "across two displays";
    EXPECT_EQ(shownAt(dBoxProc, 900, 400), "900,342") << "on the display that shows most of it";
}

TEST_F(DialogPlaces, DisplaysThatBecomeSmallerTakeADialogAlong)
{
    run([this] {
        user.drag({85, 200}, {325, 460});
        expectCorner(360, 340, "partly off the display");
        user.setDepth(1);
        expectCorner(360, 340, "nothing has become smaller");
        user.resizeDisplay(600, 480);
        expectCorner(360, 340, "more than half of it shows");
        user.resizeDisplay(520, 342);
        expectCorner(215, 207, "in the corner next to where it was, with its frame");
        user.resizeDisplay(800, 600);
        expectCorner(215, 207, "a larger display moves nothing");
        user.drag({189, 300}, {589, 750});
        expectCorner(665, 607, "dropped where little of it shows");
        user.setDepth(8);
        user.resizeDisplay(700, 600);
        expectCorner(665, 607, "where the user put it");
    });
}

TEST_F(DialogPlaces, DisplaysThatBecomeSmallerTakeAlongWhatCannotBeDragged)
{
    run([this] {
        user.then([this] {
            reinterpret_cast<WindowPeek>(dialog)->procID = dBoxProc;
            MoveWindow(dialog, 300, 300, false);
        });
        user.resizeDisplay(590, 430);
        expectCorner(282, 292, "though most of it shows");
    });
}

TEST_F(DialogPlaces, ATemplateCanAskForTheMiddleOrAStep)
{
    addPlaced(600, 0x280A);
    addPlaced(601, 0x380A);
    auto corner = [](DialogPtr made) {
        Rect content = (**reinterpret_cast<WindowPeek>(made)->contRgn).rgnBBox;
        return std::pair<int, int>(content.left, content.top);
    };
    const WindowPtr inFront = reinterpret_cast<WindowPtr>(-1);
    std::vector<DialogPtr> all = {GetNewDialog(600, nullptr, inFront)};
    EXPECT_EQ(corner(all[0]), (std::pair{220, 20 + (460 - 100) / 2}));
    all.push_back(GetNewDialog(601, nullptr, inFront));
    all.push_back(GetNewDialog(601, nullptr, inFront));
    EXPECT_EQ(corner(all[1]), (std::pair{30, 70}));
    EXPECT_EQ(corner(all[2]), (std::pair{50, 90}));
    for (int i = 0; i < 40; ++i) {
        all.push_back(GetNewDialog(601, nullptr, inFront));
        auto [h, v] = corner(all.back());
        ASSERT_TRUE(h >= 10 && h + 200 <= 640 && v >= 30 && v + 100 <= 480) << i << ": " << h << "," << v;
    }
    for (DialogPtr made : all)
        DisposDialog(made);
}
