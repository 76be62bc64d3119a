// `riders` with one difference: what `play` plays takes place in a window on
// the desktop, with xdotool for hands.
#include "commands/commands.h"
#include "desktop/window_seat.h"

int main(int argc, char **argv)
{
    CLI::App app{"riders, played in a window"};
    riders::commands::Commands commands(app);
    commands.seatPlayersAt(
        [](const std::vector<toolbox::Display> &displays) { return std::make_unique<desktop::WindowSeat>(displays); });
    CLI11_PARSE(app, argc, argv);
    return commands.run() ? 0 : 1;
}
