#include "measure/leseproblem.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

namespace {

Meldung meldung(Lesegrund grund) {
    switch (grund) {
    case Lesegrund::Leer:
        return Meldung::LeseLeer;
    case Lesegrund::KeinText:
        return Meldung::LeseKeinText;
    case Lesegrund::ZuGroß:
        return Meldung::LeseZuGroß;
    case Lesegrund::KeineMessdatei:
        return Meldung::LeseKeineMessdatei;
    case Lesegrund::AndererZeichensatz:
        return Meldung::LeseAndererZeichensatz;
    case Lesegrund::DateiEndet:
        return Meldung::LeseDateiEndet;
    case Lesegrund::ZeileZuKurz:
        return Meldung::LeseZeileZuKurz;
    case Lesegrund::KeineZahl:
        return Meldung::LeseKeineZahl;
    case Lesegrund::FeldKeineZahl:
        return Meldung::LeseFeldKeineZahl;
    case Lesegrund::Flügelnummer:
        return Meldung::LeseFlügelnummer;
    case Lesegrund::FlügelDoppelt:
        return Meldung::LeseFlügelDoppelt;
    case Lesegrund::ZuVieleFlügel:
        return Meldung::LeseZuVieleFlügel;
    case Lesegrund::KeinFlügel:
        return Meldung::LeseKeinFlügel;
    case Lesegrund::SpalteFehlt:
        return Meldung::LeseSpalteFehlt;
    case Lesegrund::Feldzahl:
        return Meldung::LeseFeldzahl;
    case Lesegrund::HalberPunkt:
        return Meldung::LeseHalberPunkt;
    case Lesegrund::Punktzahl:
        return Meldung::LesePunktzahl;
    case Lesegrund::Unerwartet:
        break;
    }
    return Meldung::LeseUnerwartet;
}

} // namespace

QString text(const Leseproblem& problem, const Texte& texte) {
    const QString& muster = texte(meldung(problem.grund));
    switch (problem.texte.size()) {
    case 0:
        return muster;
    case 1:
        return muster.arg(problem.texte[0]);
    default: // both at once: a quoted "%2" must not be filled in
        return muster.arg(problem.texte[0], problem.texte[1]);
    }
}

QString textMitZeile(const Leseproblem& problem, const Texte& texte) {
    return texte(Meldung::LeseZeile).arg(QString::number(problem.zeile), text(problem, texte));
}

QString textUnlesbar(const QString& pfad, const Texte& texte) {
    const QFileInfo datei(pfad);
    const Meldung grund = datei.isDir()                       ? Meldung::DateiIstOrdner
                          : datei.exists() && !datei.isFile() ? Meldung::DateiBesondere
                          : datei.isReadable()                ? Meldung::DateiLesefehler
                          : datei.exists()                    ? Meldung::DateiKeineRechte
                                                              : Meldung::DateiVerschwunden;
    return texte(grund).arg(QDir::toNativeSeparators(pfad));
}

QString zitat(QStringView text) {
    constexpr qsizetype höchstens = 40;
    const QString einzeilig =
        text.first(std::min(text.size(), 4 * höchstens)).toString().simplified();
    return einzeilig.size() <= höchstens ? einzeilig : einzeilig.first(höchstens - 1) + u'…';
}

} // namespace tarvel
