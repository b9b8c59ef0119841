#include "platform/kuerzel.h"

#include <QAction>

#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

QStringList mitKürzelbuchstaben(QStringList texte) {
    std::set<QChar> vergeben;
    for (QString& text : texte) {
        text.replace(u'&', u"&&"_s);
        for (qsizetype i = 0; i < text.size() && text.at(i) != u'\t'; ++i) {
            const QChar buchstabe = text.at(i).toLower();
            if (buchstabe.isLetterOrNumber() && vergeben.insert(buchstabe).second) {
                text.insert(i, u'&');
                break;
            }
        }
    }
    return texte;
}

void vergibKürzelbuchstaben(const QList<QAction*>& aktionen) {
    QStringList texte;
    for (const QAction* aktion : aktionen) {
        texte << aktion->text();
    }
    const QStringList neue = mitKürzelbuchstaben(texte);
    for (qsizetype i = 0; i < neue.size(); ++i) {
        aktionen[i]->setText(neue[i]);
    }
}

} // namespace tarvel
