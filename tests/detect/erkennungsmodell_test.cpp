#include "detect/erkennungsmodell.h"

#include <gtest/gtest.h>

using namespace tarvel;

namespace {

std::shared_ptr<const Erkennungsmodell> modell(const Modellergebnis& ergebnis) {
    const auto* m = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&ergebnis);
    return m ? *m : nullptr;
}

} // namespace

TEST(Erkennungsmodell, whatIsWritten_isReadAgain) {
    const auto eingebaut = modell(eingebautesModell());
    ASSERT_TRUE(eingebaut);
    const QByteArray datei = eingebaut->alsDatei();
    EXPECT_LE(datei.size(), 400 * 1024);
    const auto wieder = modell(liesErkennungsmodell(datei));
    ASSERT_TRUE(wieder);
    EXPECT_EQ(wieder->alsDatei(), datei);
    EXPECT_EQ(wieder->stufen.back().gewichte, eingebaut->stufen.back().gewichte);
}

TEST(Erkennungsmodell, damagedFiles_areRefused) {
    const QByteArray datei = modell(eingebautesModell())->alsDatei();
    const auto grund = [](const QByteArray& bytes) {
        const auto ergebnis = liesErkennungsmodell(bytes);
        const auto* fehler = std::get_if<Modellfehler>(&ergebnis);
        return fehler ? std::optional(*fehler) : std::nullopt;
    };
    EXPECT_EQ(grund({}), Modellfehler::KeinModell);
    EXPECT_EQ(grund("Tarvel wing"), Modellfehler::KeinModell);
    for (qsizetype länge :
         {qsizetype{18}, qsizetype{30}, qsizetype{60}, datei.size() / 2, datei.size() - 1})
        EXPECT_EQ(grund(datei.left(länge)), Modellfehler::Beschädigt) << länge;
    EXPECT_EQ(grund(datei + 'x'), Modellfehler::Beschädigt);
    for (qsizetype ort = 60; ort < datei.size(); ort += datei.size() / 40) {
        QByteArray bytes = datei;
        bytes[ort] = char(bytes[ort] ^ 4);
        EXPECT_EQ(grund(bytes), Modellfehler::Beschädigt) << ort;
    }
    QByteArray neuer = datei;
    neuer[21] = char(neuer[21] + 1);
    EXPECT_EQ(grund(neuer), Modellfehler::AndereFassung);
}
