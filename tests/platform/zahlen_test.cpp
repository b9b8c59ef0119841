#include "platform/zahlen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const Zahlenformat deutsch{u',', u'.', u"€"_s};
const Zahlenformat englisch{u'.', u',', u"$"_s};

TEST(Format, double_roundsHalfAwayFromZeroOnTheDecimalText) {
    struct Fall {
        double wert;
        QStringView muster;
        QStringView text;
    };
    const Fall faelle[] = {
        {7, u"000", u"007"},
        {2.5, u"000", u"003"},
        {99.5, u"000", u"100"},
        {-12.25, u"000", u"-012"},
        {1.4999999999999998, u"00", u"02"},
        {1.005, u"0.00", u"1,01"},
        {1.015, u"0.00", u"1,02"},
        {0.285, u"0.00", u"0,29"},
        {9.995, u"0.00", u"10,00"},
        {0.9994999999999999, u"0.000", u"1,000"},
        {-0.05, u"0.00", u"-0,05"},
        {-0.4, u"0", u"-0"},
        {-0.0, u"0.0", u"0,0"},
        {1e-7, u"0.0", u"0,0"},
        {0.5, u"#.0", u",5"},
        {0, u"#.0", u",0"},
        {1234.5678, u"#.0", u"1234,6"},
        {0, u"+0.0;-0.0", u"+0,0"},
        {12.25, u"+0.0;-0.0", u"+12,3"},
        {-12.25, u"+0.0;-0.0", u"-12,3"},
        {1.2345678901234568e17, u"0.00", u"123456789012346000,00"},
        {1.5, u"0.0##", u"1,5"},
        {1.25, u"(0.0 mm)", u"(1,3 mm)"},
        {0, u"0;-0;null", u"null"},
        {3, u"", u"3"},
    };
    for (const Fall& fall : faelle)
        EXPECT_EQ(Format(fall.wert, fall.muster, deutsch), fall.text.toString()) << fall.wert;
}

TEST(Format, single_roundsOnSevenDigits) {
    EXPECT_EQ(Format(0.9994999F, u"0.000", englisch), u"0.999"_s);
    EXPECT_EQ(Format(0.045F, u"0.00", englisch), u"0.05"_s);
    EXPECT_EQ(Format(2.345F, u"0.00", englisch), u"2.35"_s);
    EXPECT_EQ(Format(98.6F, u"#.0", englisch), u"98.6"_s);
    EXPECT_EQ(Format(3.4e38F, u"0.0", englisch), u"34"_s + QString(37, u'0') + u".0"_s);
}

TEST(Format, wholeNumber_isPadded) {
    EXPECT_EQ(Format(7, u"000", deutsch), u"007"_s);
    EXPECT_EQ(Format(qint16{-7}, u"00", deutsch), u"-07"_s);
    EXPECT_EQ(Format(qint16{100}, u"00", deutsch), u"100"_s);
    EXPECT_EQ(Format(1, u"+0.0;-0.0", deutsch), u"+1,0"_s);
    EXPECT_EQ(Format(std::numeric_limits<int>::min(), u"0", deutsch), u"-2147483648"_s);
}

TEST(Format, text_isFormattedWhenNumericAndElseUnchanged) {
    struct Fall {
        QStringView text;
        QStringView muster;
        QStringView deutsch;
        QStringView englisch;
    };
    const Fall faelle[] = {
        {u" 7 ", u"000", u"007", u"007"},
        {u"1,5", u"0.0", u"1,5", u"15.0"},
        {u"2.5", u"0.00", u"25,00", u"2.50"},
        {u"1.234,5", u"0.0", u"1234,5", u"1.2"},
        {u"(5)", u"00", u"-05", u"-05"},
        {u"$5", u"0.00", u"$5", u"5.00"},
        {u"5 €", u"0", u"5", u"5 €"},
        {u"&H10", u"000", u"016", u"016"},
        {u"1e3", u"0", u"1000", u"1000"},
        {u"1d3", u"0", u"1d3", u"1d3"},
        {u"5%", u"0", u"5%", u"5%"},
        {u"abc", u"00", u"abc", u"abc"},
        {u"-", u"00", u"-", u"-"},
        {u"  ", u"00", u"  ", u"  "},
        {u"", u"00", u"", u""},
    };
    for (const Fall& fall : faelle) {
        const QString text = fall.text.toString();
        EXPECT_EQ(Format(text, fall.muster, deutsch), fall.deutsch.toString());
        EXPECT_EQ(Format(text, fall.muster, englisch), fall.englisch.toString());
    }
}

TEST(Format, whatThePatternCannotShow_isTheDefaultText) {
    for (const double wert : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(Format(wert, u"0.00", deutsch), zahltext(wert, deutsch));
    }
    EXPECT_EQ(Format(2.5, u"", deutsch), u"2,5"_s);
    EXPECT_EQ(Format(7, u"", deutsch), u"7"_s);
    EXPECT_EQ(Format(u"7,50"_s, u"", deutsch), u"7,50"_s);
    EXPECT_EQ(Format(-1.5, u"0.0;;null", deutsch), u"-1,5"_s); // an empty section is none
    EXPECT_EQ(Format(0.0, u"0.0;-0.0;", deutsch), u"0,0"_s);
}

TEST(Zahltext, default_isShortestTextOfItsPrecision) {
    const std::pair<double, QStringView> doubles[] = {
        {-0.0, u"0"},
        {0.30000000000000004, u"0,3"},
        {2.0 / 3, u"0,666666666666667"},
        {0.0001, u"0,0001"},
        {-1e-5, u"-1E-05"},
        {999999999999999, u"999999999999999"},
        {1e15, u"1E+15"},
        {1e-100, u"1E-100"},
    };
    for (const auto& [wert, text] : doubles)
        EXPECT_EQ(zahltext(wert, deutsch), text.toString());
    const std::pair<float, QStringView> floats[] = {
        {0.9203F, u"0.9203"}, {14.285714F, u"14.28571"},         {1234567, u"1234567"},
        {1e7F, u"1E+07"},     {12345678, u"1.234568E+07"},       {-1000, u"-1000"},
        {1e-6F, u"1E-06"},    {3.40282347e38F, u"3.402823E+38"},
    };
    for (const auto& [wert, text] : floats)
        EXPECT_EQ(zahltext(wert, englisch), text.toString());
}

TEST(Val, text_givesItsLeadingNumber) {
    const std::pair<QStringView, double> faelle[] = {
        {u"7", 7},          {u" 12 / 5", 12}, {u"1 2", 12},   {u"2.5abc", 2.5}, {u"2,5", 2},
        {u".5", 0.5},       {u"-3", -3},      {u"- 3", -3},   {u"+3", 3},       {u"1E5", 1e5},
        {u"1d-2", 0.01},    {u"1e", 1},       {u"1e+x", 1},   {u"1.2.3", 1.2},  {u"", 0},
        {u"abc", 0},        {u"-", 0},        {u".", 0},      {u"&H1F", 31},    {u"&o17z", 15},
        {u"&HFFFF", -1},    {u"&", 0},        {u"1e-999", 0}, {u"nan", 0},      {u"inf", 0},
        {u"012AB2025", 12},
    };
    for (const auto& [text, zahl] : faelle)
        EXPECT_EQ(Val(text), zahl) << text.toString().toStdString();
    EXPECT_EQ(Val(u"&H12345"), 74565);
    EXPECT_EQ(Val(u"1\n2\t3"), 123);
    EXPECT_EQ(Val(u"-1e999"), -std::numeric_limits<double>::max());
}

TEST(ZahlAusText, wholeText_isReadByTheSystemsRules) {
    struct Fall {
        QStringView text;
        std::optional<double> deutsch;
        std::optional<double> englisch;
    };
    const Fall faelle[] = {
        {u" - 7 ", -7, -7},
        {u"1,5", 1.5, 15},
        {u"2.3125", 23125, 2.3125},
        {u"1.234,5", 1234.5, 1.2345},
        {u"12,34,5", {}, 12345},
        {u"1..2", 12, {}},
        {u"-.5", {}, -0.5},
        {u"5,", 5, 5},
        {u",", {}, {}},
        {u"1e+3", 1000, 1000},
        {u"1e+", {}, {}},
        {u"1e 3", {}, {}},
        {u"1 234", {}, {}},
        {u"--7", {}, {}},
        {u"12abc", {}, {}},
        {u"0x10", {}, {}},
        {u"NaN", {}, {}},
        {u"&H12345", 74565, 74565},
        {u"&H1G", {}, {}},
        {u"&H", {}, {}},
        {u"&HFFFFFFFFF", {}, {}},
        {u"(5", {}, {}},
        {u"(x)", {}, {}},
        {u"", {}, {}},
        {u"1e-400", 0, 0},
        {u"1e309", {}, {}},
        {u"1e99999", {}, {}},
    };
    for (const Fall& fall : faelle) {
        EXPECT_EQ(zahlAusText(fall.text, deutsch), fall.deutsch)
            << fall.text.toString().toStdString();
        EXPECT_EQ(zahlAusText(fall.text, englisch), fall.englisch)
            << fall.text.toString().toStdString();
    }
    EXPECT_EQ(zahlAusText(QString(400, u'9'), deutsch), std::nullopt);
    EXPECT_EQ(zahlAusText(u"0,"_s + QString(400, u'0') + u'1', deutsch), 0.0);
    EXPECT_TRUE(istNumerisch(u"7", deutsch));
    EXPECT_FALSE(istNumerisch(u"True", deutsch));
}

TEST(ZahlAusText, blankAsThousandsSeparator_isUnderstood) {
    const Zahlenformat franzoesisch{u',', u'\u202F', u"€"_s};
    EXPECT_EQ(zahlAusText(u"1 234,5", franzoesisch), 1234.5);
    EXPECT_EQ(zahlAusText(u"1\u202F234,5", franzoesisch), 1234.5);
    EXPECT_EQ(zahlAusText(u"1\u00A0234,5 €", franzoesisch), 1234.5);
    EXPECT_EQ(zahlAusText(u"1 x", franzoesisch), std::nullopt);
}

TEST(GetippteZahl, pointAndComma_areBothTheDecimalSeparator) {
    const std::pair<QStringView, std::optional<double>> faelle[] = {
        {u"2.3125", 2.3125}, {u"2,3125", 2.3125}, {u" -7 ", -7},  {u",5", 0.5}, {u"5.", 5},
        {u"1E-05", 1e-5},    {u"1.234,5", {}},    {u"1,2,3", {}}, {u"1 2", {}}, {u"abc", {}},
        {u"", {}},           {u".", {}},          {u"1e999", {}}, {u"5 €", {}},
    };
    for (const auto& [text, zahl] : faelle)
        EXPECT_EQ(getippteZahl(text), zahl) << text.toString().toStdString();
}

TEST(Ganzzahl, half_goesToTheEvenNeighbour) {
    EXPECT_EQ(ganzzahl16(0.5), 0);
    EXPECT_EQ(ganzzahl16(-1.5), -2);
    EXPECT_EQ(ganzzahl16(2.5), 2);
    EXPECT_EQ(ganzzahl16(3.5), 4);
    EXPECT_EQ(ganzzahl16(0.49999999999999994), 0);
    EXPECT_EQ(ganzzahl16(98.6F), 99);
}

TEST(Ganzzahl, numberBeyondItsBits_isNone) {
    EXPECT_EQ(ganzzahl16(32767.4), 32767);
    EXPECT_EQ(ganzzahl16(32767.5), std::nullopt);
    EXPECT_EQ(ganzzahl16(-32768.5), -32768);
    EXPECT_EQ(ganzzahl16(-32768.50001), std::nullopt);
    EXPECT_EQ(ganzzahl32(2147483647.4), 2147483647);
    EXPECT_EQ(ganzzahl32(2147483647.5), std::nullopt);
    EXPECT_EQ(ganzzahl32(1e300), std::nullopt);
    EXPECT_EQ(ganzzahl32(std::nan("")), std::nullopt);
    EXPECT_EQ(einfachGenau(1e39), std::nullopt);
    EXPECT_EQ(einfachGenau(0.1), 0.1F);
}

} // namespace
} // namespace tarvel
