#include "proof/separated_inks.h"

#include <cstdio>
#include <string_view>

namespace riders::proof {
namespace {

constexpr std::string_view kStart = R"(
userdict /RidersProofInks 30 dict put
RidersProofInks begin
/operator {systemdict exch get exec} bind def
/process 6 dict def
[/Cyan /Magenta /Yellow /Black /All /None] {process exch 0 put} forall
/isSpot { % name or string - bool
  dup type /stringtype eq {cvn} if process exch known not
} bind def
% A space of n colours that is white whatever they are: inks that no device has.
/unknown [1 1 8 {(RidersProof ) dup 11 4 -1 roll 48 add put cvn} for] def
/white { % n - space
  [
    /DeviceN unknown 0 5 -1 roll getinterval /DeviceCMYK
    [2 index length {pop} /repeat cvx 0 0 0 0] cvx
  ]
} def
/counts 10 dict def
counts begin
  /DeviceGray 1 def /DeviceRGB 3 def /DeviceCMYK 4 def /CIEBasedA 1 def /CIEBasedABC 3 def
  /CIEBasedDEF 3 def /CIEBasedDEFG 4 def /Separation 1 def /Indexed 1 def
end
/withBase {dup length array copy dup 1 2 copy get changed put} def % space - space
/kindOf {dup type /arraytype eq {0 get} if} bind def
)";

constexpr std::string_view kProcessOnly = R"(
/changed { % space - space
  dup kindOf
  dup /Separation eq {
    pop dup 1 get isSpot {4 array copy dup 2 /DeviceCMYK put dup 3 {pop 0 0 0 0} put} if
  } {
    dup /Indexed eq exch /Pattern eq or 1 index type /arraytype eq and {dup length 1 gt {withBase} if} if
  } ifelse
} def
end
)";

constexpr std::string_view kSpotAsBlack = R"(
/hasSpot { % space - bool
  dup type /arraytype eq {
    dup 0 get /Separation eq
      {1 get dup type /stringtype eq {cvn} if spot eq}
      {dup length 1 gt {1 get hasSpot} {pop false} ifelse}
    ifelse
  } {pop false} ifelse
} def
/changed { % space - space
  dup kindOf
  dup /Separation eq {
    pop dup hasSpot {pop [/Separation /Black /DeviceGray {1 exch sub}]} {dup 1 get isSpot
      1 index 1 get dup type /stringtype eq {cvn} if dup /All eq exch /None eq or not or {pop 1 white} if} ifelse
  } {
    dup /Pattern eq 1 index /Indexed eq 3 index hasSpot and or {
      pop dup type /arraytype eq {dup length 1 gt {withBase} if} if
    } {
      dup /ICCBased eq {pop 1 get /N get white} {
        counts 1 index known {counts exch get exch pop white} {pop} ifelse
      } ifelse
    } ifelse
  } ifelse
} def
/paper {1 systemdict /setgray get exec} bind def
% The plate's screen is that of the ink, where inks have their own.
/withScreen { % halftone - halftone
  dup /HalftoneType get 5 eq {
    dup length 1 add dict copy
    dup dup spot known {spot} {/Default} ifelse get 1 index exch /Black exch put
  } if
} def
end
userdict begin
/setgray {pop RidersProofInks /paper get exec} def
/setrgbcolor {pop pop setgray} def
/sethsbcolor {pop pop setgray} def
/setcmykcolor {pop pop pop setgray} def
/initgraphics {/initgraphics RidersProofInks /operator get exec 0 setgray} def
/sethalftone {
  RidersProofInks begin withScreen end /sethalftone RidersProofInks /operator get exec
} def
/image {
  dup type /dicttype eq not {
    8 dict begin
    /DataSource exch def /ImageMatrix exch def /BitsPerComponent exch def /Height exch def /Width exch def
    /ImageType 1 def /Decode [0 1] def currentdict
    end
    gsave /DeviceGray setcolorspace /image RidersProofInks /operator get exec grestore
  } {/image RidersProofInks /operator get exec} ifelse
} def
end
<< /BeginPage {pop 0 setgray} >> setpagedevice
)";

constexpr std::string_view kEnd = R"(
userdict /setcolorspace {
  RidersProofInks begin changed end /setcolorspace RidersProofInks /operator get exec
} put
)";

std::string hexString(const std::string &bytes)
{
    std::string text = "<";
    for (const char c : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
        text += digits;
    }
    return text + ">";
}

}  // namespace

std::string processInksOnly()
{
    return std::string(kStart) + std::string(kProcessOnly) + std::string(kEnd);
}

std::string spotInkAsBlack(const std::string &ink)
{
    return std::string(kStart) + "/spot " + hexString(ink) + " cvn def\n" + std::string(kSpotAsBlack) +
           std::string(kEnd);
}

}  // namespace riders::proof
