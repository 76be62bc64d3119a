// docs/screens.md lists the dot shapes that are installed.
#include "screens/shapes.h"
#include "support/documents.h"
#include "support/toolbox_test.h"

TEST(ShapesDocument, ListsTheInstalledShapes)
{
    namespace screens = riders::screens;
    std::vector<std::string> listed, installed;
    for (const TableRow &row : tableIn(sourceText("docs/screens.md"), "Name")) {
        listed.push_back(quotedIn(row.at(1)).at(0) + ": " + row.at(2));
        for (const std::string &name : quotedIn(row.at(0)))
            listed.push_back(name);
    }
    for (const screens::Shape &shape : screens::installedShapes()) {
        installed.push_back(shape.name + ": " + screens::aboutShape(shape));
        for (const std::string &name : screens::namesOf(shape))
            installed.push_back(name);
    }
    EXPECT_EQ(listed, installed);
}
