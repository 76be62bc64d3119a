// Starting and stopping the managers, and what they report as left over.
#include <iterator>
#include <new>

#include "session/current.h"
#include "session/managers.h"
#include "toolbox/host/session.h"

namespace toolbox {
namespace {

LeakReport atStart;

struct Manager {
    void (*start)(const Configuration &);
    void (*stop)();
};

constexpr Manager inOrder[] = {
    {managers::startMemory, managers::stopMemory},
    {managers::startFiles, managers::stopFiles},
    {managers::startResources, managers::stopResources},
    {managers::startQuickDraw, managers::stopQuickDraw},
    {managers::startEvents, managers::stopEvents},
    {managers::startWindows, managers::stopWindows},
    {managers::startControls, managers::stopControls},
    {managers::startTextEdit, managers::stopTextEdit},
    {managers::startDialogs, managers::stopDialogs},
    {managers::startMenus, managers::stopMenus},
    {managers::startScrap, managers::stopScrap},
    {managers::startSystem, managers::stopSystem},
    {managers::startStandardFile, managers::stopStandardFile},
};

LeakReport everything()
{
    return {managers::pointerCount(), managers::handleCount(),
            managers::openFileCount() + managers::openResourceFileCount(), managers::openWindowCount(),
            managers::loadedResourceCount()};
}

}  // namespace

void start(const Configuration &configuration, Machine &machine)
{
    stop();
    session::current = {configuration, &machine};
    try {
        for (const Manager &manager : inOrder)
            manager.start(session::current.configuration);
    } catch (const std::bad_alloc &) {
        stop();
        throw;
    }
    atStart = everything();
}

void stop()
{
    if (!session::current.machine)
        return;
    for (auto manager = std::rbegin(inOrder); manager != std::rend(inOrder); ++manager)
        manager->stop();
    session::current.machine = nullptr;
}

LeakReport leftBehind()
{
    LeakReport now = everything();
    return {now.pointers - atStart.pointers, now.handles - atStart.handles, now.openFiles - atStart.openFiles,
            now.openWindows - atStart.openWindows, now.loadedResources - atStart.loadedResources};
}

std::string LeakReport::text() const
{
    return std::to_string(pointers) + " pointers, " + std::to_string(handles) + " handles, " +
           std::to_string(openFiles) + " open files, " + std::to_string(openWindows) + " open windows, " +
           std::to_string(loadedResources) + " loaded resources";
}

}  // namespace toolbox
