#include "measure/bildmarke.h"

#include <QCryptographicHash>
#include <QFile>

namespace tarvel {

namespace {

constexpr qint64 Blocklänge = 4096;
constexpr qint64 Blöcke = 64;
constexpr qsizetype Zeichen = 16; // of the hash; 64 bits

} // namespace

QString inhaltsmarke(const QString& pfad) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) {
        return {};
    }
    const qint64 länge = datei.size();
    const bool ganz = länge <= Blöcke * Blocklänge;
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (qint64 i = 0; i < (ganz ? 1 : Blöcke); ++i) {
        const qint64 anfang = ganz ? 0 : i * (länge - Blocklänge) / (Blöcke - 1);
        const qint64 erwartet = ganz ? länge : Blocklänge;
        if (!datei.seek(anfang)) {
            return {};
        }
        const QByteArray block = datei.read(erwartet);
        if (block.size() != erwartet) {
            return {};
        }
        hash.addData(block);
    }
    return QString::number(länge, 16) + u'-' +
           QString::fromLatin1(hash.result().toHex().first(Zeichen));
}

} // namespace tarvel
