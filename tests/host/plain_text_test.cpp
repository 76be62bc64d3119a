// What a job or a file name says is shown, never obeyed.
#include <gtest/gtest.h>

#include "io/plain_text.h"

namespace {

using riders::io::plainText;

TEST(PlainText, ControlCharactersBecomeBlanks)
{
    EXPECT_EQ(plainText("a\x1B[31mb\tc\nd\re\x7F"), "a [31mb c d e ");
    EXPECT_EQ(plainText("one\xC2\x9Btwo"), "one two");
    EXPECT_EQ(plainText("Gr\xFCn\x9B"), "Grün ");  // Latin-1
    EXPECT_EQ(plainText("left\xE2\x80\xAEthgir\xE2\x81\xA9 \xE2\x80\xA8"), "left thgir   ");
    EXPECT_EQ(plainText("„Grün“ – 1 % €"), "„Grün“ – 1 % €");
    EXPECT_EQ(plainText(std::string("\0x", 2)), " x");
}

}  // namespace
