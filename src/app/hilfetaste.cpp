#include "app/hilfetaste.h"

#include "lang/hilfe.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// What a window is about; empty for one that looks after the key itself.
QString thema(const QString& fenster) {
    const std::pair<QString, QString> themen[] = {
        {u"HG"_s, {}},
        {u"Übersetz"_s, {}},
        {u"DB"_s, u"ergebnisse"_s},
        {u"Zuchtschau"_s, u"ergebnisse"_s},
        {u"Bericht"_s, u"austausch"_s},
        {u"Auswahl"_s, u"austausch"_s},
        {u"Drucken_"_s, u"protokoll"_s},
        {u"Optionen"_s, u"beurteilung"_s},
        {u"MessHilfe"_s, u"messpunkte"_s},
    };
    const auto* const stelle = std::find_if(std::begin(themen), std::end(themen),
                                            [&](const auto& t) { return t.first == fenster; });
    return stelle == std::end(themen) ? u"index"_s : stelle->second;
}

} // namespace

Hilfetaste::Hilfetaste(const Texte& texte, Shell& shell, Dialoge& dialoge)
    : texte_(texte)
    , shell_(shell)
    , dialoge_(dialoge) {
    qApp->installEventFilter(this);
}

bool Hilfetaste::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
        return false;
    }
    const auto& taste = static_cast<const QKeyEvent&>(*event);
    if (taste.key() != Qt::Key_F1 || taste.modifiers() != Qt::NoModifier) {
        return false;
    }
    const QString seite = thema(static_cast<const QWidget*>(watched)->window()->objectName());
    if (seite.isEmpty()) {
        return false;
    }
    zeigeHilfe(texte_, shell_, dialoge_, seite);
    return true;
}

} // namespace tarvel
