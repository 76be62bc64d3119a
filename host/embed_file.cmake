# The script of riders_embed: writes OUTPUT, in which NAME of NAMESPACE is the bytes of FILE.
file(READ ${FILE} bytes HEX)
string(LENGTH "${bytes}" size)
math(EXPR size "${size} / 2")
string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
get_filename_component(name ${FILE} NAME)
file(WRITE ${OUTPUT} "// ${name}, embedded by the build.
#include <string_view>

namespace ${NAMESPACE} {
namespace {

constexpr char text[] = {${bytes} 0};

}  // namespace

extern const std::string_view ${NAME};
const std::string_view ${NAME}(text, ${size});

}  // namespace ${NAMESPACE}
")
