// What the start and stop of the Toolbox call in each manager, in the order of
// start; stop runs backwards. Each room defines its own two; startup/ calls them.
// Private to the Toolbox.
#pragma once

#include "toolbox/host/session.h"

namespace toolbox::managers {

void startMemory(const Configuration &configuration);
void startFiles(const Configuration &configuration);
void startResources(const Configuration &configuration);
void startQuickDraw(const Configuration &configuration);
void startEvents(const Configuration &configuration);
void startWindows(const Configuration &configuration);
void startControls(const Configuration &configuration);
void startTextEdit(const Configuration &configuration);
void startDialogs(const Configuration &configuration);
void startMenus(const Configuration &configuration);
void startScrap(const Configuration &configuration);
void startSystem(const Configuration &configuration);
void startStandardFile(const Configuration &configuration);

void stopMemory();
void stopFiles();
void stopResources();
void stopQuickDraw();
void stopEvents();
void stopWindows();
void stopControls();
void stopTextEdit();
void stopDialogs();
void stopMenus();
void stopScrap();
void stopSystem();
void stopStandardFile();

// For the leak report. What a manager keeps for itself it allocates at start,
// where it does not count as left over.
int pointerCount();
int handleCount();          // without resources
int openFileCount();
int openResourceFileCount();
int openWindowCount();
int loadedResourceCount();  // those that cannot be purged, in files that are open

}  // namespace toolbox::managers
