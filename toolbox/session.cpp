#include "toolbox/host/session.h"

#include <stdexcept>

#include "managers.h"

namespace toolbox {
namespace {

struct Session {
    Configuration configuration;
    Machine *machine = nullptr;
    LeakReport atStart;
};

Session session;

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
    {managers::startDialogs, managers::stopDialogs},
    {managers::startMenus, managers::stopMenus},
    {managers::startScrap, managers::stopScrap},
    {managers::startSystem, managers::stopSystem},
    {managers::startStandardFile, managers::stopStandardFile},
};

LeakReport everything()
{
    return {managers::pointerCount(), managers::handleCount(), managers::openFileCount() + managers::openResourceFileCount(),
            managers::openWindowCount(), managers::loadedResourceCount()};
}

}  // namespace

void start(const Configuration &configuration, Machine &machine)
{
    stop();
    session.configuration = configuration;
    session.machine = &machine;
    for (const Manager &manager : inOrder)
        manager.start(session.configuration);
    session.atStart = everything();
}

void stop()
{
    if (!session.machine)
        return;
    for (auto manager = std::rbegin(inOrder); manager != std::rend(inOrder); ++manager)
        manager->stop();
    session.machine = nullptr;
}

Machine &machine()
{
    if (!session.machine)
        throw std::logic_error("the Toolbox is not started");
    return *session.machine;
}

const Configuration &configuration()
{
    return session.configuration;
}

LeakReport leftBehind()
{
    LeakReport now = everything();
    const LeakReport &then = session.atStart;
    return {now.pointers - then.pointers, now.handles - then.handles, now.openFiles - then.openFiles,
            now.openWindows - then.openWindows, now.loadedResources - then.loadedResources};
}

std::string LeakReport::text() const
{
    return std::to_string(pointers) + " pointers, " + std::to_string(handles) + " handles, " +
           std::to_string(openFiles) + " open files, " + std::to_string(openWindows) + " open windows, " +
           std::to_string(loadedResources) + " loaded resources";
}

}  // namespace toolbox
