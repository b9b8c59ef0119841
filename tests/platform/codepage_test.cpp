#include "platform/codepage.h"

#include <gtest/gtest.h>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

TEST(Codepage1252, everyByte_comesBackAsItself) {
    for (int i = 0; i < 256; ++i) {
        const QByteArray byte(1, static_cast<char>(static_cast<uchar>(i)));
        EXPECT_EQ(nachCodepage1252(ausCodepage1252(byte)), byte) << i;
    }
}

TEST(Codepage1252, placesThatDifferFromLatin1_areThePagesOwn) {
    EXPECT_EQ(ausCodepage1252("\x80\x8A\x8C\x92\x9F\xE4"), u"€ŠŒ’Ÿä"_s);
    EXPECT_EQ(ausCodepage1252("\x81\x8D\x8F\x90\x9D"), u"\x81\x8D\x8F\x90\x9D"_s);
}

TEST(Codepage1252, characterOutsideThePage_becomesQuestionMark) {
    EXPECT_EQ(nachCodepage1252(u"aΩ\x80𝄞z"_s), QByteArray("a???z"));
    const QChar halb(0xD834); // the first half of a character beyond the basic plane
    EXPECT_EQ(nachCodepage1252(halb + u"x"_s + halb), QByteArray("?x?"));
}

} // namespace
} // namespace tarvel
