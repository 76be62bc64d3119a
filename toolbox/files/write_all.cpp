#include "toolbox/host/write_all.h"

#include <unistd.h>

#include <cerrno>

#include "files/retried.h"

int toolbox::writeAll(int descriptor, std::string_view bytes, off_t position, std::size_t &done)
{
    done = 0;
    while (done < bytes.size()) {
        const ssize_t written = files::retried([&] {
            return pwrite(descriptor, bytes.data() + done, bytes.size() - done, position + static_cast<off_t>(done));
        });
        if (written <= 0)
            return written == 0 ? EIO : errno;
        done += static_cast<std::size_t>(written);
    }
    return 0;
}
