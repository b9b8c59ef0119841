#include "lang/hilfe.h"

#include "platform/dialoge.h"
#include "platform/shell.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString kürzel(Sprache sprache) {
    switch (sprache) {
    case Sprache::Englisch:
        return u"en"_s;
    case Sprache::Französisch:
        return u"fr"_s;
    case Sprache::Deutsch:
        break;
    }
    return u"de"_s;
}

} // namespace

QString hilfeseite(const QStringList& ordner, Sprache sprache, const QString& seite) {
    for (const QString& o : ordner) {
        const QFileInfo datei(o + u"/guide/"_s + kürzel(sprache) + u'/' + seite + u".html"_s);
        if (datei.isFile()) {
            return datei.canonicalFilePath(); // a browser may not follow a link in a hidden folder
        }
    }
    return {};
}

QString hilfeseite(const Texte& texte, const QString& seite) {
    const QString programm = QCoreApplication::applicationDirPath();
    return hilfeseite(
        {QFileInfo(texte.HilfeDatei()).path(), programm, programm + u"/../../share/tarvel"_s},
        texte.sprache().value_or(Sprache::Deutsch), seite);
}

bool hilfeVorhanden(const Texte& texte) {
    struct Suche {
        QString datei;
        std::optional<Sprache> sprache;
        bool vorhanden = false;
    };
    static Suche letzte; // only the windows' thread asks
    if (letzte.datei != texte.HilfeDatei() || letzte.sprache != texte.sprache()) {
        letzte = {texte.HilfeDatei(), texte.sprache(),
                  QFileInfo::exists(texte.HilfeDatei()) || !hilfeseite(texte).isEmpty()};
    }
    return letzte.vorhanden;
}

bool öffneHilfe(const Texte& texte, Shell& shell, const QString& seite) {
    if (shell.openDocument(texte.HilfeDatei())) {
        return true;
    }
    const QString html = hilfeseite(texte, seite);
    return !html.isEmpty() && shell.openDocument(html);
}

void zeigeHilfe(const Texte& texte, Shell& shell, Dialoge& dialoge, const QString& seite) {
    if (öffneHilfe(texte, shell, seite)) {
        return;
    }
    const QString html = hilfeseite(texte, seite);
    dialoge.meldung(texte(Text::MenüHilfe),
                    html.isEmpty()
                        ? texte(Text::DateiNichtGefunden) + u'\n' +
                              QDir::toNativeSeparators(texte.HilfeDatei())
                        : texte(Meldung::HilfeNichtGeöffnet).arg(QDir::toNativeSeparators(html)),
                    Meldungsart::Ausruf);
}

} // namespace tarvel
