#include "platform/system_dialoge.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace tarvel {
namespace {

QMessageBox::Icon bildVon(Meldungsart art) {
    switch (art) {
    case Meldungsart::Hinweis:
        return QMessageBox::Information;
    case Meldungsart::Frage:
        return QMessageBox::Question;
    case Meldungsart::Ausruf:
        return QMessageBox::Warning;
    case Meldungsart::Stopp:
        return QMessageBox::Critical;
    case Meldungsart::Schlicht:
        break;
    }
    return QMessageBox::NoIcon;
}

void richteEin(QMessageBox& box, const QString& titel, const QString& text, Meldungsart art) {
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(titel);
    box.setText(text);
    box.setIcon(bildVon(art));
}

QPushButton* knopf(QMessageBox& box, QMessageBox::StandardButton art, const QString& wort) {
    QPushButton* neu = box.addButton(art);
    if (!wort.isEmpty())
        neu->setText(wort);
    return neu;
}

} // namespace

void SystemDialoge::meldung(const QString& titel, const QString& text, Meldungsart art) {
    QMessageBox box(QApplication::activeWindow());
    richteEin(box, titel, text, art);
    knopf(box, QMessageBox::Ok, worte_.ok);
    box.exec();
}

Antwort SystemDialoge::frage(const Frage& frage) {
    QMessageBox box(QApplication::activeWindow());
    richteEin(box, frage.titel, frage.text, frage.art);
    QPushButton* ja = knopf(box, QMessageBox::Yes, frage.ja.isEmpty() ? worte_.ja : frage.ja);
    QPushButton* nein =
        knopf(box, QMessageBox::No, frage.nein.isEmpty() ? worte_.nein : frage.nein);
    QPushButton* sicherer = nein;
    if (frage.mitAbbrechen)
        sicherer = knopf(box, QMessageBox::Cancel, worte_.abbrechen);
    box.setEscapeButton(sicherer);
    box.setDefaultButton(frage.verwirft || frage.art == Meldungsart::Stopp ? sicherer : ja);
    box.exec();

    const QAbstractButton* gewaehlt = box.clickedButton();
    if (gewaehlt == ja)
        return Antwort::Ja;
    if (gewaehlt == nein || !frage.mitAbbrechen)
        return Antwort::Nein;
    return Antwort::Abbrechen;
}

QString SystemDialoge::dateiOeffnen(const QString& titel, const QString& ordner,
                                    const QString& filter) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), titel, ordner, filter);
}

QString SystemDialoge::dateiSpeichern(const QString& titel, const QString& vorschlag,
                                      const QString& filter) {
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), titel, vorschlag, filter);
}

} // namespace tarvel
