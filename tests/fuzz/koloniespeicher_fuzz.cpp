// What is kept of a collection. Input: what a kept file holds between the mark of the rules and the
// mark below it, which is put right here; otherwise nothing would come past that.

#include "collection/inhaltsmarke.h"
#include "collection/kolonieausgabe.h"
#include "collection/koloniespeicher.h"
#include "fuzz/fuzz.h"

using namespace tarvel;

namespace {

constexpr quint64 Regelmarke = 0x0807060504030201;

QByteArray mitMarke(QByteArray bytes) {
    Inhaltsmarke marke;
    marke.füge(bytes);
    const quint64 wert = marke.wert();
    return bytes.append(reinterpret_cast<const char*>(&wert), sizeof wert);
}

/// What every file of these rules begins with.
QByteArray anfang() {
    constexpr qsizetype Leer = 3 * sizeof(quint32) + sizeof(quint64);
    return alsDatei({}, Regelmarke).chopped(Leer);
}

/// Whatever the views do with figures.
void benutze(const Koloniespeicher& speicher) {
    Koloniesammlung sammlung;
    for (const Koloniesatz& satz : speicher.sätze) {
        sammlung.kolonien.push_back(satz.werte);
    }
    for (const Geschlecht tiere : {Geschlecht::Arbeiterinnen, Geschlecht::Drohnen}) {
        Kolonieauswahl auswahl =
            wähle(sammlung, {.tiere = tiere, .texte = {}, .saison = {}, .dpi = {}});
        for (int spalte = 0; spalte < Kolonienspalten; ++spalte) {
            sortiere(auswahl, spalte, true);
            for (std::size_t i = 1; i < auswahl.size(); ++i) {
                const auto vorher = indexzahl(*auswahl[i - 1], spalte);
                const auto zahl = indexzahl(*auswahl[i], spalte);
                verlange(!zahl || (vorher && *vorher >= *zahl), "figures can be put in order");
            }
        }
        (void)filterwerte(sammlung, tiere);
        (void)kolonientabelle(auswahl).csv();
        (void)jahrestabelle(gruppen(auswahl, Merkmalsfeld::Züchter)).csv();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const QByteArray Anfang = anfang();
    const QByteArray inhalt = Anfang + eingabe(daten, größe).toByteArray();
    verlange(!speicherAus(inhalt, Regelmarke), "without its mark a file is refused");
    const QByteArray datei = mitMarke(inhalt);
    verlange(!speicherAus(datei, Regelmarke + 1), "figures of other rules are refused");
    if (const auto speicher = speicherAus(datei, Regelmarke)) {
        benutze(*speicher);
        const QByteArray wieder = alsDatei(*speicher, Regelmarke);
        const auto gelesen = speicherAus(wieder, Regelmarke);
        verlange(gelesen.has_value(), "what was kept is read");
        verlangeGleich(wieder, alsDatei(*gelesen, Regelmarke), "and kept again the same");
    }
    return 0;
}
