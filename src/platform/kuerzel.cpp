#include "platform/kuerzel.h"

#include <QAction>

#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

void vergibKürzelbuchstaben(const QList<QAction*>& aktionen) {
    std::set<QChar> vergeben;
    for (QAction* aktion : aktionen) {
        QString text = aktion->text();
        text.replace(u'&', u"&&"_s);
        for (qsizetype i = 0; i < text.size() && text.at(i) != u'\t'; ++i) {
            const QChar buchstabe = text.at(i).toLower();
            if (buchstabe.isLetterOrNumber() && vergeben.insert(buchstabe).second) {
                text.insert(i, u'&');
                break;
            }
        }
        aktion->setText(text);
    }
}

} // namespace tarvel
