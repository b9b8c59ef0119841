// Models that wings are found by. Input: changes of the program's own model, six bytes each: place
// (four bytes, low one first), what to do there, a value. The sum in its head is made right again,
// so that what is behind it is reached. A file of another beginning is read as it is.

#include "../bench/musterblatt.h"
#include "detect/bildpixel.h"
#include "detect/fluegelerkennung.h"
#include "fuzz/fuzz.h"

#include <QCryptographicHash>

#include <cmath>

using namespace tarvel;

namespace {

constexpr qsizetype Summe = 22; ///< where it stands in the file
constexpr qsizetype Inhalt = Summe + 32;

QByteArray geändert(QByteArray datei, QByteArrayView änderungen) {
    for (qsizetype i = 0; i + 6 <= änderungen.size() && datei.size() > Inhalt; i += 6) {
        const auto byte = [&](int k) { return static_cast<quint8>(änderungen[i + k]); };
        const quint32 zahl = byte(0) + 256U * byte(1) + 65536U * byte(2) + 16777216U * byte(3);
        const qsizetype ort = Inhalt + zahl % static_cast<quint32>(datei.size() - Inhalt);
        switch (byte(4) % 4) {
        case 0:
            datei.truncate(ort);
            break;
        case 1:
            datei.insert(ort, static_cast<char>(byte(5)));
            break;
        default:
            datei[ort] = static_cast<char>(byte(5));
            break;
        }
    }
    const QByteArray summe =
        QCryptographicHash::hash(datei.mid(Inhalt), QCryptographicHash::Sha256);
    return datei.left(Summe) + summe + datei.mid(Inhalt);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const QByteArray eigenes =
        std::get<std::shared_ptr<const Erkennungsmodell>>(eingebautesModell())->alsDatei();
    static const QImage blatt = male({.flügel = 1, .dpi = 300, .grau = true}).bild;
    const QByteArrayView bytes = eingabe(daten, größe);
    (void)liesErkennungsmodell(bytes.toByteArray());
    const Modellergebnis gelesen = liesErkennungsmodell(geändert(eigenes, bytes));
    const auto* modell = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&gelesen);
    if (modell == nullptr) {
        return 0;
    }
    const Modellergebnis wieder = liesErkennungsmodell((*modell)->alsDatei());
    verlange(std::holds_alternative<std::shared_ptr<const Erkennungsmodell>>(wieder),
             "what is written is read");
    // Where the wing lies the own model knows; to look for it with each takes too long.
    static const Affin lage = [] {
        Suchverlauf verlauf;
        const Flügelerkennung erkennung(
            std::get<std::shared_ptr<const Erkennungsmodell>>(eingebautesModell()));
        const auto funde = erkennung.finde(Bildpixel(blatt), 300, verlauf, 1);
        verlange(funde.size() == 1, "the own model finds the wing");
        return funde.front().vorschlag.lage;
    }();
    const Punktvorschlag vorschlag = Punktsucher(**modell).suche(Bildpixel(blatt), lage);
    for (std::size_t i = 0; i < vorschlag.punkte.size(); ++i) {
        const QPointF ort = vorschlag.punkte.at(i);
        verlange(std::isfinite(ort.x()) && std::isfinite(ort.y()), "places are numbers");
        verlange(std::isfinite(vorschlag.fehler.at(i)), "errors are numbers");
    }
    return 0;
}
