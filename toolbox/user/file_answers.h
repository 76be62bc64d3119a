// Answering Standard File's dialogs as a person does, with folder popup and
// list. Private to the scripted user.
#pragma once

#include <filesystem>

#include "standardfile/file_dialog.h"
#include "standardfile/state.h"
#include "user/activity.h"

namespace toolbox::user {

// Goes to the folder of the path, if it names one.
class AnswerFile : public Activity {
public:
    explicit AnswerFile(const std::filesystem::path &path);
    Progress advance(Hand &hand) final;

protected:
    // Continues once the folder is the right one.
    virtual Progress answer(Hand &hand, const standardfile::State &state) = 0;
    virtual bool saving() const = 0;
    // Clicks the row of that name, scrolling to it first; true once clicked.
    bool clickRow(Hand &hand, const standardfile::State &state, const std::string &linuxName, int clicks);

    std::string fileName_;
    Press accept_{standardfile::acceptItem};   // kept, because it counts how long it has waited

private:
    Progress goTowards(Hand &hand, const standardfile::State &state);

    std::filesystem::path folder_;
    std::unique_ptr<Choose> goingUp_;
    int lastFirstRow_ = -1;
};

class AnswerSave : public AnswerFile {
public:
    using AnswerFile::AnswerFile;

private:
    Progress answer(Hand &hand, const standardfile::State &state) override;
    bool saving() const override { return true; }
    bool named_ = false;
};

class AnswerOpen : public AnswerFile {
public:
    using AnswerFile::AnswerFile;

private:
    Progress answer(Hand &hand, const standardfile::State &state) override;
    bool saving() const override { return false; }
    bool chosen_ = false;
};

// Answers the question before a file is replaced, if it is asked.
class AnswerReplace : public Activity {
public:
    explicit AnswerReplace(bool replace) : press_(replace ? ok : cancel) {}
    Progress advance(Hand &hand) override;

private:
    Press press_;
};

void cancelFile(Hand &hand);

}  // namespace toolbox::user
