#include "lang/qt_uebersetzung.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

QtÜbersetzung::QtÜbersetzung(const Texte& texte, const QString& programmordner, QObject* parent)
    : QObject(parent)
    , ordner_(programmordner + u"/translations"_s) {
    connect(&texte, &Texte::languageChanged, this, [this, &texte] { wendeAn(texte); });
    wendeAn(texte);
}

void QtÜbersetzung::wendeAn(const Texte& texte) {
    QCoreApplication::removeTranslator(&übersetzer_);
    // The program's own texts are German before a language is loaded.
    const Sprache sprache = texte.sprache().value_or(Sprache::Deutsch);
    if (sprache == Sprache::Englisch) {
        return;
    }
    const QString datei = sprache == Sprache::Deutsch ? u"qtbase_de"_s : u"qtbase_fr"_s;
    if (übersetzer_.load(datei, ordner_) ||
        übersetzer_.load(datei, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&übersetzer_);
    }
}

} // namespace tarvel
