// Settings files. Input: a line whose first byte chooses a setting and whose rest is what is
// written there; then the file.

#include "evaluation/rassestandard.h"
#include "fuzz/fuzz.h"
#include "platform/codepage.h"
#include "platform/profil.h"
#include "settings/einstellungen.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

QString pfad() {
    static const QTemporaryDir ordner;
    static const QString ini = ordner.filePath(u"Index.ini"_s);
    return ini;
}

QByteArray dateiinhalt() {
    QFile datei(pfad());
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

void schreibe(QByteArrayView inhalt) {
    QFile datei(pfad());
    const bool offen = datei.open(QIODevice::WriteOnly);
    verlange(offen && datei.write(inhalt.toByteArray()) == inhalt.size(), "the drive takes a file");
}

/// What can stand in a line; more is cut off by writing.
QByteArray bisZeilenende(QByteArrayView text) {
    const QByteArrayView enden("\r\0", 2);
    const auto* ende = std::find_first_of(text.begin(), text.end(), enden.begin(), enden.end());
    return text.first(ende - text.begin()).toByteArray();
}

/// Everything but at most a part of one line is as it was.
void prüfeÄnderung(const QByteArray& alt, const QByteArray& neu) {
    const qsizetype kürzer = std::min(alt.size(), neu.size());
    const qsizetype vorn =
        std::mismatch(alt.begin(), alt.begin() + kürzer, neu.begin()).first - alt.begin();
    const qsizetype hinten =
        std::mismatch(alt.rbegin(), alt.rbegin() + (kürzer - vorn), neu.rbegin()).first -
        alt.rbegin();
    const QByteArray weg = alt.sliced(vorn, alt.size() - vorn - hinten);
    verlange(!weg.contains('\n') && !weg.contains('\r'), "writing changes one line only");
}

/// The values under all other keys.
QList<QByteArray> übrigeWerte(const Einstellungszeile& außer) {
    const Profil profil(pfad());
    QList<QByteArray> werte;
    for (const Einstellungszeile& z : einstellungstabelle()) {
        if (z.abschnitt != außer.abschnitt || z.schlüssel != außer.schlüssel) {
            werte += profil
                         .wert(nachCodepage1252(z.abschnitt.toString()),
                               nachCodepage1252(z.schlüssel.toString()))
                         .value_or("none"_qba);
        }
    }
    return werte;
}

void prüfeNamen() {
    const Profil profil(pfad());
    for (const QByteArray& sektion : profil.sektionen()) {
        for (const QByteArray& schlüssel : profil.schlüssel(sektion)) {
            verlange(profil.wert(sektion, schlüssel).has_value(), "a key that is named is found");
        }
    }
}

void prüfeSchreiben(const Einstellungszeile& zeile, const QByteArray& wert) {
    const QList<QByteArray> übrige = übrigeWerte(zeile);
    const QByteArray vorher = dateiinhalt();
    Einstellungen einstellungen(pfad());
    einstellungen.schreibe(zeile.id, ausCodepage1252(wert));
    if (einstellungen.schreibenMisslungen()) {
        verlange(dateiinhalt() == vorher, "a file that is not written stays");
        return;
    }
    const QByteArray nachher = dateiinhalt();
    prüfeÄnderung(vorher, nachher);
    verlange(übrigeWerte(zeile) == übrige, "all other values stay");
    if (zeile.art == Einstellungsart::Text && !wert.isEmpty()) {
        verlange(einstellungen.text(zeile.id, u"?"_s) ==
                     ausCodepage1252(wert.left(zeile.puffer - 1)),
                 "a text comes back");
    }
    einstellungen.schreibe(zeile.id, ausCodepage1252(wert));
    verlange(dateiinhalt() == nachher, "writing again changes nothing");
}

void prüfeStandard(int rasse) {
    const Einstellungen einstellungen(pfad());
    const Rassestandard standard = ladeRassestandard(rasse, einstellungen);
    Profil ini(pfad());
    SpeichernKarte5Arbeiterinnen(standard, rasse, ini);
    SpeichernKarte5Drohnen(standard, rasse, ini);
    if (ini.sichere()) {
        const Rassestandard wieder = ladeRassestandard(rasse, einstellungen);
        verlange(wieder.arbeiterinnen == standard.arbeiterinnen &&
                     wieder.drohnen == standard.drohnen,
                 "a standard comes back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    QByteArrayView rest = eingabe(daten, größe);
    const QByteArrayView wahl = nimmZeile(rest);
    const auto byte = static_cast<std::size_t>(wahl.isEmpty() ? 0 : uchar(wahl.front()));
    const auto tabelle = einstellungstabelle();
    const Einstellungszeile& zeile = tabelle[byte % tabelle.size()];

    verlange(nachCodepage1252(ausCodepage1252(rest)) == rest, "the code page keeps all bytes");
    schreibe(rest);
    const Einstellungen einstellungen(pfad());
    (void)einstellungen.zahl(zeile.id);
    if (zeile.art == Einstellungsart::Text) {
        verlange(einstellungen.text(zeile.id).size() <
                     std::max<qsizetype>(zeile.puffer, zeile.text.size() + 1),
                 "a text fits its buffer");
    }
    prüfeNamen();
    prüfeSchreiben(zeile, bisZeilenende(wahl.sliced(std::min<qsizetype>(1, wahl.size()))));
    // Slow, so that not every input does it.
    if (byte % 32 < 4) {
        prüfeStandard(static_cast<int>(byte % 32) + 1);
    }
    return 0;
}
