// A season's work in one go: memory stays where it is.

#include "app/fenster.h"

#include <cstdlib>

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
#if !defined(__has_feature)
#define __has_feature(x) 0
#endif
#if !__has_feature(address_sanitizer)
#include <malloc.h>
#define TARVEL_HEAP_COUNTED
#endif
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// Bytes that are in use; nullopt where they cannot be counted.
std::optional<std::size_t> belegt() {
#ifdef TARVEL_HEAP_COUNTED
    const struct mallinfo2 stand = mallinfo2();
    return stand.uordblks + stand.hblkhd;
#else
    return std::nullopt;
#endif
}

struct Dauerlauf : Fenstertest {
    void SetUp() override {
        schreibeIni("[Start]\r\nNeu=False\r\n[Allgemeines]\r\nKurzzeichen=AB\r\n");
        ASSERT_TRUE(starte());
    }

    /// A picture, a wing, stored, and the examination loaded again.
    void runde(int nummer) {
        ASSERT_TRUE(hg().ladeBild(bilder.at(nummer % 2)));
        wähle(u"men_Datei_0"_s);
        wähle(u"men_Ansicht_7"_s);
        klickeFlügel();
        ASSERT_EQ(reihe().nummern().size(), 1U);
        wähle(u"men_Datei_2"_s);
        ASSERT_FALSE(hg().isWindowModified());
        ASSERT_TRUE(hg().öffneDatei(ordner.filePath(u"Meine Tabelle.tdb"_s)));
        ASSERT_EQ(reihe().nummern().size(), 1U);
        QApplication::processEvents();
        dialoge = TestDialoge();
    }

    std::array<QString, 2> bilder{maleBild({906, 320}, u"a.png"_s),
                                  maleBild({910, 330}, u"b.png"_s)};
};

} // namespace

TEST_F(Dauerlauf, memoryStaysFlat) {
    const int runden = qEnvironmentVariableIsSet("TARVEL_LONG") ? 2000 : 40;
    const int warm = runden / 4;
    std::optional<std::size_t> vorher;
    for (int nummer = 0; nummer < runden; ++nummer) {
        if (nummer == warm) {
            vorher = belegt();
        }
        ASSERT_NO_FATAL_FAILURE(runde(nummer)) << nummer;
    }
    EXPECT_EQ(Ergebnistabelle(ordner.filePath(u"Meine Tabelle.tdb"_s)).anzahl(), runden);
    const std::optional<std::size_t> nachher = belegt();
    if (!vorher || !nachher) {
        GTEST_SKIP() << "the heap cannot be counted here";
    }
    const double jeRunde =
        (static_cast<double>(*nachher) - static_cast<double>(*vorher)) / (runden - warm);
    RecordProperty("bytesPerRound", std::to_string(jeRunde));
    std::printf("%.0f bytes a round over %d rounds\n", jeRunde, runden - warm);
    constexpr double höchstens = 4096; // a picture or a row that stayed would be many times that
    EXPECT_LT(jeRunde, höchstens);
}
