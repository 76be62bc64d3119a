#include "architecture/standard_headers.h"

#include <iterator>
#include <set>
#include <sstream>

namespace architecture {

namespace {

const char *const kNames =
    "algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono "
    "cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine "
    "csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque "
    "exception execution filesystem format forward_list fstream functional future initializer_list "
    "iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource "
    "mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator "
    "semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string "
    "string_view strstream syncstream system_error thread tuple type_traits typeindex typeinfo "
    "unordered_map unordered_set utility valarray variant vector version assert.h ctype.h errno.h fenv.h "
    "float.h inttypes.h limits.h locale.h math.h setjmp.h signal.h stdarg.h stddef.h stdint.h stdio.h "
    "stdlib.h string.h time.h uchar.h wchar.h wctype.h ";

}  // namespace

bool isStandard(const std::string &header)
{
    static const std::set<std::string> names = [] {
        std::istringstream text(kNames);
        return std::set<std::string>{std::istream_iterator<std::string>(text), {}};
    }();
    return names.contains(header);
}

}  // namespace architecture
