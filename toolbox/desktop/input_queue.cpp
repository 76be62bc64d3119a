#include "desktop/input_queue.h"

#include <algorithm>

namespace toolbox::desktop {
namespace {

using Kind = Input::Kind;

bool isNews(Kind kind)
{
    return kind == Kind::displaysChanged || kind == Kind::clipboardChanged || kind == Kind::quit;
}

bool replaces(const Input &later, const Input &earlier)
{
    return later.kind == Kind::mouseMoved && earlier.kind == Kind::mouseMoved && later.modifiers == earlier.modifiers;
}

}  // namespace

void InputQueue::push(const Input &input)
{
    if (isNews(input.kind) && holds(input.kind))
        return;
    if (!inputs_.empty() && replaces(input, inputs_.back()))
        inputs_.back() = input;
    else
        inputs_.push_back(input);
}

std::optional<Input> InputQueue::take()
{
    if (inputs_.empty())
        return std::nullopt;
    Input input = inputs_.front();
    inputs_.pop_front();
    return input;
}

bool InputQueue::holds(Kind kind) const
{
    return std::any_of(inputs_.begin(), inputs_.end(), [=](const Input &input) { return input.kind == kind; });
}

}  // namespace toolbox::desktop
