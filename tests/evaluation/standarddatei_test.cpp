// A standard as a text: what is written comes back, what is damaged is named.

#include "evaluation/standarddatei.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

struct Standarddateitest : testing::Test {
    Texte texte{QString()};
    Standarddatei datei{u"Carnica"_s, {}};

    Standarddateitest() {
        texte.SpracheDeutsch();
        datei.standard.kennung = {u"Landesverband Łódź"_s, u"2"_s, u"2026-03-01"_s, {}};
        datei.standard.kennung.Marke = standardmarke(datei.standard);
    }
    [[nodiscard]] QString grund(const QByteArray& bytes) const {
        const auto gelesen = liesStandarddatei(bytes);
        const auto* fehler = std::get_if<Standardfehler>(&gelesen);
        return fehler == nullptr ? QString() : fehlertext(*fehler, texte);
    }
    [[nodiscard]] QByteArray geändert(const QByteArray& von, const QByteArray& nach) const {
        QByteArray text = standardtext(datei).toUtf8();
        EXPECT_TRUE(text.contains(von)) << von.data();
        return text.replace(von, nach);
    }
};

} // namespace

TEST_F(Standarddateitest, standard_comesBackWithEveryValue) {
    for (const Standardzeile& zeile : standardtabelle()) {
        Standarddatei andere = datei;
        const QString wert = zeile.art == Werteart::Prozent   ? u"12.5%"_s
                             : zeile.art == Werteart::Bereich ? u"03-29"_s
                             : zeile.art == Werteart::Option  ? u"0"_s
                                                              : u"1"_s;
        übernehme(zeile, andere.standard, wert);
        EXPECT_EQ(abweichungen(datei.standard, andere.standard), std::vector{&zeile});
        const QByteArray text = standardtext(andere).toUtf8();
        for (const QByteArray& bytes :
             {text, "\xEF\xBB\xBF" + QByteArray(text).replace("\n", "\r\n"),
              QByteArray(text).replace("[", "; note\n\n [")}) {
            const auto gelesen = liesStandarddatei(bytes);
            ASSERT_TRUE(std::holds_alternative<Standarddatei>(gelesen)) << qPrintable(grund(bytes));
            EXPECT_EQ(std::get<Standarddatei>(gelesen), andere) << qPrintable(wert);
        }
    }
    const auto mitKomma = liesStandarddatei(geändert("Panzer E=30%", "Panzer E=12,5 %"));
    ASSERT_TRUE(std::holds_alternative<Standarddatei>(mitKomma));
    EXPECT_EQ(std::get<Standarddatei>(mitKomma).standard.arbeiterinnen.Panzer[1], u"12.5%"_s);
    for (const Werteart art :
         {Werteart::InZehnteln, Werteart::InHundertsteln, Werteart::InTausendsteln}) {
        const auto alle = standardtabelle();
        const auto zeile = std::find_if(alle.begin(), alle.end(),
                                        [art](const Standardzeile& z) { return z.art == art; });
        for (int zahl = art == Werteart::InZehnteln ? 0 : -32768; zahl <= 32767; zahl += 7) {
            Rassestandard standard;
            zeile->zahl(standard) = static_cast<qint16>(zahl);
            Rassestandard wieder;
            übernehme(*zeile, wieder, anzeigetext(*zeile, standard, Zahlenformat()));
            ASSERT_EQ(wieder, standard) << zahl;
        }
    }
}

TEST_F(Standarddateitest, whatIsNoStandard_isRefusedWithItsLine) {
    const std::pair<QByteArray, QString> fälle[] = {
        {"", u"Die Datei ist leer."_s},
        {"wing,x1\n1,2\n", u"Die Datei enthält keinen Rassestandard."_s},
        {QByteArray(300, '\0'), u"Die Datei enthält keinen Text."_s},
        {geändert("standard 1", "standard 2"),
         u"Die Datei ist von einer anderen Version des Programms geschrieben worden (Aufbau 2)."_s},
        {geändert("Panzer E=30%\n", ""),
         u"Die Datei ist beschädigt: 'Arbeiterinnen: Panzerzeichen E' fehlt."_s},
        {standardtext(datei).left(500).toUtf8(), QString()},
        {geändert("Rasse=Carnica\n", ""), u"Die Datei ist beschädigt: 'Rasse' fehlt."_s},
        {geändert("Panzer E=30%", "Panzer O=30%"),
         u"Zeile 16: 'Arbeiterinnen: Panzerzeichen O' steht zweimal da."_s},
        {geändert("Panzer E=30%", "Panzer E=viel"),
         u"Zeile 16: 'viel' passt nicht zu 'Arbeiterinnen: Panzerzeichen E'."_s},
        {geändert("Panzer E=30%", "Panzer E=-3%"),
         u"Zeile 16: '-3%' passt nicht zu 'Arbeiterinnen: Panzerzeichen E'."_s},
        {geändert("Panzer E=30%", "Panzer E=40000%"),
         u"Zeile 16: '40000%' passt nicht zu 'Arbeiterinnen: Panzerzeichen E'."_s},
        {geändert("Mittelwert=2.5", "Mittelwert=4000"),
         u"Zeile 20: '4000' passt nicht zu 'Arbeiterinnen: Mittelwert CI'."_s},
        {geändert("CI Mittel A=0", "CI Mittel A=ja"),
         u"Zeile 19: 'ja' passt nicht zu 'Arbeiterinnen: CI prüfen'."_s},
        {geändert("Klasse 0=15-17", "Klasse 0=15-45"),
         u"Arbeiterinnen: Klasse 0: Die höchste Klasse ist 30."_s},
        {geändert("Klasse 1=01-15", "Klasse 1=15-01"),
         u"Arbeiterinnen: Klasse 1: Die erste Klasse ist höher als die letzte."_s},
        {geändert("Klasse 1=01-15", "Klasse 1=1-"),
         u"Zeile 23: '1-' passt nicht zu 'Arbeiterinnen: Klasse 1'."_s},
        {geändert("[Grenzlinien]", "[Fremdes]"),
         u"Zeile 42: 'CI Arbeit=2.00' gehört nicht an diese Stelle."_s},
        {geändert("Datum=2026-03-01", "Datum=gestern"),
         u"Zeile 6: 'gestern' passt nicht zu 'Standard'."_s},
    };
    for (const auto& [bytes, erwartet] : fälle) {
        if (erwartet.isEmpty()) {
            EXPECT_FALSE(grund(bytes).isEmpty());
        } else {
            EXPECT_EQ(grund(bytes), erwartet);
        }
    }
}

TEST_F(Standarddateitest, name_tellsVersionAndWhetherValuesChangedSince) {
    Rassestandard& s = datei.standard;
    EXPECT_EQ(standardname(s, datei.Rasse, texte), u"Landesverband Łódź, Fassung 2"_s);
    s.arbeiterinnen.Panzer[1] = u"20%"_s;
    EXPECT_EQ(standardname(s, datei.Rasse, texte),
              u"Landesverband Łódź, Fassung 2, danach geändert"_s);
    s.arbeiterinnen.Panzer[1] = u"030 %"_s; // means the same
    EXPECT_EQ(standardname(s, datei.Rasse, texte), u"Landesverband Łódź, Fassung 2"_s);
    s.kennung = {};
    EXPECT_EQ(standardname(s, datei.Rasse, texte), u"Carnica"_s);
}

TEST_F(Standarddateitest, limitsOfAVerdict_areComparedWithThoseItRestsOn) {
    const QString damals = standardtext(datei);
    Rassestandard jetzt = datei.standard;
    jetzt.arbeiterinnen.Panzer[1] = u"20%"_s;
    jetzt.drohnen.max = u"5%"_s;
    jetzt.linien.Arbeit.CI.gespeichert = 1;
    jetzt.arbeiterinnen.mittel.Mittelwert.gespeichert = 30; // not asked for
    const auto beleg = [&](Geschlecht tiere) {
        return urteilsbeleg(damals, jetzt, tiere, texte, {u',', u'.'}).value_or(Urteilsbeleg{});
    };
    EXPECT_THAT(beleg(Geschlecht::Arbeiterinnen).abweichungen,
                ElementsAre(u"Panzerzeichen E: 30% → 20%"_s));
    EXPECT_THAT(beleg(Geschlecht::Drohnen).abweichungen, ElementsAre(u"Klasse 3 ≤: 0% → 5%"_s));
    jetzt.arbeiterinnen.mittel.CIMittel = 1;
    EXPECT_THAT(beleg(Geschlecht::Arbeiterinnen).abweichungen,
                ElementsAre(u"Panzerzeichen E: 30% → 20%"_s, u"CI prüfen: Nein → Ja"_s,
                            u"Mittelwert CI: 2,5 → 3,0"_s));
    EXPECT_FALSE(urteilsbeleg(u"", jetzt, Geschlecht::Drohnen, texte, {}));
    EXPECT_FALSE(urteilsbeleg(u"Tarvel-Rassestandard 9", jetzt, Geschlecht::Drohnen, texte, {}));
}
