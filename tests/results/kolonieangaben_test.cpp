#include "results/kolonieangaben.h"
#include "results/untersuchung.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

TEST(Kolonieangaben, yearOfTwoCharacters_isCompletedAtTheCutOver) {
    for (const auto& [text, erwartet] : {std::pair{u"05"_s, u"2005"_s},
                                         {u"90"_s, u"2090"_s},
                                         {u"91"_s, u"1991"_s},
                                         {u"99"_s, u"1999"_s},
                                         {u"5"_s, u"5"_s},
                                         {u"2005"_s, u"2005"_s},
                                         {u""_s, u""_s},
                                         {u"ab"_s, u"20ab"_s}}) {
        EXPECT_EQ(jahrErgänzt(text), erwartet);
    }
}

TEST(Kolonieangaben, numericNumbers_getTheirDigitsAndOthersStay) {
    const Zahlenformat komma{.dezimal = u',', .tausender = u'.'};
    for (const auto& [text, drei, zwei] : {std::tuple{u"7"_s, u"007"_s, u"07"_s},
                                           {u"007"_s, u"007"_s, u"07"_s},
                                           {u"1234"_s, u"1234"_s, u"1234"_s},
                                           {u"A7"_s, u"A7"_s, u"A7"_s},
                                           {u""_s, u""_s, u""_s},
                                           {u" 7 "_s, u"007"_s, u"07"_s},
                                           {u"7-3"_s, u"7-3"_s, u"7-3"_s}}) {
        EXPECT_EQ(nummerDreistellig(text, komma), drei);
        EXPECT_EQ(nummerZweistellig(text, komma), zwei);
    }
}

TEST(Untersuchung, changes_areRememberedUntilStored) {
    Untersuchung u;
    u.setzeAngaben(u.angaben());
    EXPECT_FALSE(u.geändert()); // shown again, not changed
    Kolonieangaben angaben;
    angaben.Volk = u"12"_s;
    u.setzeAngaben(angaben);
    EXPECT_TRUE(u.angabenGeändert());
    u.alsUnverändertMerken();
    u.setzeReihe({});
    EXPECT_TRUE(u.geändert());
    EXPECT_FALSE(u.angabenGeändert());
}
