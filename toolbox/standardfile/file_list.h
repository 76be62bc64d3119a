// The list of a folder's contents with its scroll bar: drawn and tracked in
// the current port, in local coordinates. Private to Standard File.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "toolbox/quickdraw.h"

namespace toolbox::standardfile {

struct Row {
    std::string name;         // Mac OS Roman
    std::string linuxName;
    bool isFolder;
    bool selectable;          // others are dimmed
    OSType type;
};

class FileList {
public:
    void setPlace(const Rect &list, const Rect &scrollBar);
    // Shows these from the top, none selected.
    void setRows(std::vector<Row> rows);

    void drawList() const;
    void drawScrollBar() const;

    enum class Click { outside, tracked, opened };
    // Call it for a mouse press; tracks until the release. Opened: the second
    // click on the selected row.
    Click click(Point where, std::uint32_t when);

    // Selects the selectable row before (-1) or after (1) the selected one.
    void moveSelection(int step);
    // Selects the first selectable row whose name begins so, regardless of case.
    void selectNamed(const std::string &beginning);
    const Row *selected() const;
    int selectedIndex() const { return selected_; }

    const std::vector<Row> &rows() const { return rows_; }
    // Empty for a row that is not visible.
    Rect rowRect(int index) const;
    Rect arrowUp() const;
    Rect arrowDown() const;

private:
    enum class Part { none, up, down, pageUp, pageDown, thumb };

    int rowsShown() const;
    int lastFirst() const;
    int rowAt(Point where) const;
    Rect thumb() const;
    Part partAt(Point where) const;
    void drawRow(int index) const;
    void select(int index);
    void scrollTo(int first);
    void scrollBy(Part part);
    void trackSelection();
    void trackScrolling(Part part);
    void trackThumb(Point start);

    std::vector<Row> rows_;
    Rect list_{};
    Rect scrollBar_{};
    int first_ = 0;
    int selected_ = -1;
    int lastClicked_ = -1;
    std::uint32_t lastClickTime_ = 0;
};

// Pictures of 12 by 11 pixels with their top left at the point.
void drawFolderPicture(int16_t left, int16_t top);
void drawFilePicture(int16_t left, int16_t top);
// Draws the name at the pen, cut and ended by an ellipsis where it is wider. One
// that Mac OS Roman cannot express is drawn as it is where the font has its
// characters, else by its stand-in.
void drawFitting(const std::string &roman, const std::string &linuxName, int width);

}  // namespace toolbox::standardfile
