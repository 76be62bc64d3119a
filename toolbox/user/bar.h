// Choosing from the menu bar. Private to the scripted user.
#pragma once

#include "user/activity.h"

namespace toolbox::user {

// Presses the title, drags to the item and releases there; outside for an
// empty item text.
class ChooseFromBar : public Activity {
public:
    ChooseFromBar(std::string title, std::string item) : title_(std::move(title)), item_(std::move(item)) {}
    Progress advance(Hand &hand) override;

private:
    std::string title_, item_;   // UTF-8
    bool pressed_ = false;
};

}  // namespace toolbox::user
