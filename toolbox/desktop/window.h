// The window. Private to the desktop machine.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>

#include "desktop/late_errors.h"
#include "desktop/lost_display.h"
#include "desktop/pane.h"
#include "toolbox/host/desktop.h"

namespace toolbox::desktop {

// SDL's video, from its start to its end.
class Video {
public:
    Video();
    ~Video();
    Video(const Video &) = delete;
    Video &operator=(const Video &) = delete;

private:
    LateErrors lateErrors_;
};

class Window {
public:
    explicit Window(const DesktopOptions &options);

    // Size in device pixels, and how many of them a unit of the window system has.
    SDL_Point pixels() const;
    double pixelsPerUnit() const;
    // That of the display that the window is on.
    int scale() const;
    // Set the smallest size a person may give the window, and its size now, in
    // QuickDraw's pixels at that scale; the latter only if the program may choose
    // it.
    void keepAbove(int width, int height, int scale);
    void resize(int width, int height, int scale);

    void setTitle(const std::string &title);
    void setFullScreen(bool wanted);
    bool fullScreen() const;
    bool displayLost() const { return lostDisplay_.isLost(); }

    // Takes the changed part of the picture, to be shown by the next show.
    void draw(const Picture &picture, const Rect &changed);
    bool drawn() const { return allDrawn_ || drawn_.w > 0; }
    void show();
    // To be called when what the window held is lost: shows it all again.
    void showAgain();

private:
    struct Closing {
        void operator()(SDL_Window *window) const { SDL_DestroyWindow(window); }
    };
    Video video_;
    int wantedScale_;
    std::unique_ptr<SDL_Window, Closing> window_;
    LostDisplay lostDisplay_;
    std::unique_ptr<Pane> pane_;
    Picture picture_;
    SDL_Rect drawn_{};         // not yet shown
    bool allDrawn_ = false;
    SDL_Point sizeBefore_{};   // before the full screen, in the window system's units
};

}  // namespace toolbox::desktop
