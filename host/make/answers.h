// How `riders make` fills in the plug-in's dialogs, as steps of a scripted user.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "make/request.h"
#include "toolbox/host/user.h"

namespace riders::make {

class Answers {
public:
    // Both must outlive it.
    Answers(toolbox::ScriptedUser &user, const MakeRequest &request);

    void queue();
    // The plug-in's words when it refused; empty when it did not.
    const std::string &refusal() const { return refusal_; }

private:
    void chooseValue(int popupItem, const std::optional<std::string> &value);
    void chooseSpot();
    void importSpot();
    void chooseAnnotation();
    void fillAnnotation();
    void paste(const std::string &text);
    int notOffered(const std::string &words, const std::vector<std::string> &items);
    int giveUp(const std::string &words);
    bool surprised();
    void refuse(const std::string &words);
    void closeDialogs();

    toolbox::ScriptedUser &user_;
    const MakeRequest &request_;
    std::string refusal_;
};

}  // namespace riders::make
