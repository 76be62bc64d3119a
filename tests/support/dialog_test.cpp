#include "support/dialog_test.h"

using toolbox::Input;

void DialogTest::SetUp()
{
    ToolboxTest::SetUp();
    openNewResourceFile(folder.path());
    before = toolbox::leftBehind();
}

void DialogTest::TearDown()
{
    machine.setSource({});
    ToolboxTest::TearDown();
}

void DialogTest::mouse(Input::Kind kind, int h, int v, int modifiers)
{
    Input input{kind};
    input.where = Point{static_cast<int16_t>(v), static_cast<int16_t>(h)};
    input.modifiers = static_cast<uint16_t>(modifiers);
    machine.push(input);
}

void DialogTest::click(int h, int v, int modifiers)
{
    mouse(Input::Kind::mouseDown, h, v, modifiers);
    mouse(Input::Kind::mouseUp, h, v, modifiers);
}

void DialogTest::key(int character, int modifiers)
{
    Input input{Input::Kind::keyDown};
    input.character = static_cast<uint8_t>(character);
    input.modifiers = static_cast<uint16_t>(modifiers);
    machine.push(input);
}

void DialogTest::type(const std::string &text)
{
    for (char character : text)
        key(static_cast<unsigned char>(character));
}

void DialogTest::limitWaiting()
{
    int patience = 200;
    machine.setSource([patience]() mutable -> std::optional<Input> {
        if (--patience == 0)
            throw OutOfInput{};
        return std::nullopt;
    });
}

int16_t DialogTest::modal(ModalFilterProcPtr filter)
{
    limitWaiting();
    int16_t hit = 0;
    ModalDialog(filter, &hit);
    return hit;
}
