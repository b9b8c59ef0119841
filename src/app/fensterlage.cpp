#include "app/fensterlage.h"

#include <QMainWindow>
#include <QScreen>
#include <QSplitter>

namespace tarvel {

using namespace Qt::StringLiterals;

void merkeFensterlage(Einstellungen& einstellungen, const QMainWindow& fenster,
                      const QSplitter& teiler, Leistenwahl leisten) {
    einstellungen.schreibe(Einstellung::FensterHG,
                           QString::fromLatin1(fenster.saveGeometry().toBase64()));
    QStringList angaben;
    const QList<int> größen = teiler.sizes();
    for (const int größe : größen) {
        angaben << QString::number(größe);
    }
    angaben << QString::number(leisten.links ? 1 : 0) << QString::number(leisten.rechts ? 1 : 0);
    einstellungen.schreibe(Einstellung::FensterLeisten, angaben.join(u','));
}

Leistenwahl stelleFensterlageHer(const Einstellungen& einstellungen, QMainWindow& fenster,
                                 QSplitter& teiler) {
    const QByteArray lage =
        QByteArray::fromBase64(einstellungen.text(Einstellung::FensterHG).toLatin1());
    if (lage.isEmpty() || !fenster.restoreGeometry(lage)) {
        constexpr QSize Gewohnt(1280, 720);
        constexpr QSize Fensterrahmen(20, 60); // title bar and borders, which nobody tells before
        fenster.resize(Gewohnt);
        const QSize frei = fenster.screen()->availableSize() - Fensterrahmen;
        if (frei.width() < Gewohnt.width() || frei.height() < Gewohnt.height()) {
            fenster.setWindowState(Qt::WindowMaximized);
        }
    }
    const QStringList angaben = einstellungen.text(Einstellung::FensterLeisten).split(u',');
    constexpr qsizetype AnzahlAngaben = 5;
    if (angaben.size() != AnzahlAngaben) {
        return {};
    }
    // A panel that was hidden has the width 0 and must not come back with it.
    const QList<int> größen{angaben[0].toInt(), angaben[1].toInt(), angaben[2].toInt()};
    if (größen[0] > 0 && größen[1] > 0 && größen[2] > 0) {
        teiler.setSizes(größen);
    }
    return {.links = angaben[3] != u'0', .rechts = angaben[4] != u'0'};
}

} // namespace tarvel
