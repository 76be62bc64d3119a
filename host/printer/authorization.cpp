#include "printer/authorization.h"

#include <sys/stat.h>

#include <array>
#include <string_view>

#include "io/bytes.h"
#include "io/refusal.h"

namespace riders::printer {
namespace {

constexpr std::string_view kBasic = "Basic ";

std::string passwordIn(const std::filesystem::path &file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) == 0 && (status.st_mode & 077) != 0)
        throw io::Refusal(file.string() + ": others can read it; chmod 600 keeps the password");
    std::string password = io::contentsOf(file);
    password.resize(std::min(password.find('\n'), password.size()));
    if (password.empty())
        throw io::Refusal(file.string() + ": there is no password in its first line");
    return password;
}

// Takes as long wherever they differ.
bool areSame(std::string_view one, std::string_view other)
{
    unsigned difference = one.size() == other.size() ? 0 : 1;
    for (std::size_t i = 0; i < other.size(); ++i)
        difference |=
            static_cast<unsigned char>(i < one.size() ? one[i] : 0) ^ static_cast<unsigned char>(other[i]);
    return difference == 0;
}

std::string passwordGiven(pappl_client_t *client)
{
    const std::string_view field = httpGetField(papplClientGetHTTP(client), HTTP_FIELD_AUTHORIZATION);
    if (!field.starts_with(kBasic))
        return {};
    std::array<char, 1024> text{};
    int size = static_cast<int>(text.size());
    if (httpDecode64_2(text.data(), &size, std::string(field.substr(kBasic.size())).c_str()) == nullptr)
        return {};
    const std::string_view pair(text.data());
    return std::string(pair.substr(std::min(pair.find(':') + 1, pair.size())));
}

http_status_t authorize(pappl_client_t *client, const char *, gid_t, void *password)
{
    if (httpAddrLocalhost(httpGetAddress(papplClientGetHTTP(client))) != 0)
        return HTTP_STATUS_CONTINUE;
    if (httpIsEncrypted(papplClientGetHTTP(client)) == 0)
        return HTTP_STATUS_FORBIDDEN;  // anybody between could read the password
    return areSame(passwordGiven(client), *static_cast<const std::string *>(password)) ? HTTP_STATUS_CONTINUE
                                                                                       : HTTP_STATUS_UNAUTHORIZED;
}

}  // namespace

void askForPassword(pappl_system_t *system, const ServiceRequest &request)
{
    static std::string password;
    if (request.passwordFile.empty())
        return;
    password = passwordIn(request.passwordFile);
    papplSystemSetAuthCallback(system, "Basic", authorize, &password);
}

}  // namespace riders::printer
