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
    // Both must outlive it. `made` is where the file is to be saved: a folder in which dialogs can save, and a
    // name that can be typed. `spot` is the file that is imported where the menu has no dot shape of the name
    // asked for.
    Answers(toolbox::ScriptedUser &user, const MakeRequest &request, std::filesystem::path made,
            std::filesystem::path spot);

    void queue();
    // The plug-in's words when it refused; empty when it did not.
    const std::string &refusal() const { return refusal_; }
    // Its words when it only warned of saved settings that it cannot use.
    const std::string &warning() const { return warning_; }

private:
    void takeToMiddle();
    void putBack();
    void chooseValue(int popupItem, const std::optional<std::string> &value);
    void chooseSpot();
    void importSpot();
    void chooseAnnotation();
    void fillAnnotation();
    void paste(const std::string &text);
    int notOffered(const std::string &words, const std::vector<std::string> &items, const std::string &more = {});
    int giveUp(const std::string &words);
    bool surprised(int dialogID);
    void passWarning();
    void refuse(const std::string &words);

    toolbox::ScriptedUser &user_;
    const MakeRequest &request_;
    std::filesystem::path made_, spot_;
    Point place_{};  // where the settings dialog was
    std::string refusal_, warning_;
    bool importing_ = false;
    int closed_ = 0;
};

}  // namespace riders::make
