// The print server: requests, and what it says to them.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "libcups/libcups.h"

namespace riders::printing {

using Response = std::unique_ptr<ipp_t, decltype(&::ippDelete)>;

// The values of an attribute; none where it is missing.
std::vector<std::string> textsOf(ipp_t *response, const char *attribute);

// The one that lp prints to, found as it finds it.
class PrintServer {
public:
    // Throws Refusal where there is none.
    PrintServer();

    http_t *connection() const { return connection_.get(); }
    // A request about a queue, to which attributes can be added.
    ipp_t *request(ipp_op_t operation, const std::string &queue) const;
    // Takes the request. Throws Refusal with the server's words if it is refused.
    Response send(ipp_t *request, const char *resource = "/") const;
    // What went wrong last, for a message.
    static std::string lastError();

private:
    std::unique_ptr<http_t, decltype(&::httpClose)> connection_;
};

// The server, or a printer, is given up when it says nothing for a minute, or once a signal has come.
void limitWaiting(http_t *connection);

}  // namespace riders::printing
