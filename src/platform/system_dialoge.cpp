#include "platform/system_dialoge.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeySequence>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

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

void beschrifte(QPushButton& knopf, const QString& wort) {
    if (!wort.isEmpty()) {
        knopf.setText(wort);
    }
}

QPushButton* knopf(QMessageBox& box, QMessageBox::StandardButton art, const QString& wort) {
    QPushButton* neu = box.addButton(art);
    beschrifte(*neu, wort);
    return neu;
}

// A letter to press with Alt for every button that has none: the first one that is free.
void ergaenzeKuerzel(const QList<QAbstractButton*>& knoepfe) {
    QString vergeben;
    QList<QAbstractButton*> ohne;
    for (QAbstractButton* button : knoepfe) {
        const QKeySequence kuerzel = QKeySequence::mnemonic(button->text());
        if (kuerzel.isEmpty()) {
            ohne << button;
        } else {
            vergeben += QChar(kuerzel[0].key()).toUpper();
        }
    }
    for (QAbstractButton* button : ohne) {
        const QString wort = button->text();
        for (qsizetype i = 0; i < wort.size(); ++i) {
            if (wort[i].isLetterOrNumber() && !vergeben.contains(wort[i].toUpper())) {
                vergeben += wort[i].toUpper();
                button->setText(QString(wort).insert(i, u'&'));
                break;
            }
        }
    }
}

/// Who is asked something must not see an hourglass, whatever is being waited for behind the box.
class Fragezeiger {
public:
    Fragezeiger() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~Fragezeiger() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(Fragezeiger)
};

/// Where the toolkit shows its own chooser, files can neither be renamed nor deleted nor moved in
/// it. Folders can still be made, other than in one that is read-only as a whole.
void lassDateienInRuhe(const QFileDialog& chooser) {
    for (const char* name : {"qt_rename_action", "qt_delete_action"}) {
        if (auto* befehl = chooser.findChild<QAction*>(QLatin1StringView(name))) {
            befehl->setVisible(false); // and its key does nothing
        }
    }
    const auto ansichten = chooser.findChildren<QAbstractItemView*>();
    for (QAbstractItemView* ansicht : ansichten) {
        ansicht->setEditTriggers(QAbstractItemView::NoEditTriggers);
        ansicht->setDragDropMode(QAbstractItemView::NoDragDrop);
    }
}

/// A text, a list below it and buttons, of which Enter means @p vorgabe. True when one was pressed
/// that accepts.
bool zeigeListe(const QString& titel, const QString& text, const QStringList& zeilen,
                QDialogButtonBox* knoepfe, QPushButton* vorgabe) {
    QDialog fenster(QApplication::activeWindow());
    fenster.setObjectName(QStringLiteral("Bericht"));
    fenster.setWindowTitle(titel);
    auto* satz = new QLabel(text);
    satz->setTextFormat(Qt::PlainText);
    satz->setWordWrap(true);
    auto* liste = new QPlainTextEdit(zeilen.join(u'\n'));
    liste->setReadOnly(true); // but selected and copied
    liste->setTabChangesFocus(true);
    liste->setAccessibleName(text);
    satz->setBuddy(liste);
    QObject::connect(knoepfe, &QDialogButtonBox::accepted, &fenster, &QDialog::accept);
    QObject::connect(knoepfe, &QDialogButtonBox::rejected, &fenster, &QDialog::reject);
    auto* layout = new QVBoxLayout(&fenster);
    layout->addWidget(satz);
    layout->addWidget(liste, 1);
    layout->addWidget(knoepfe);
    vorgabe->setDefault(true); // which counts only within a dialog
    const QFontMetrics schrift = fenster.fontMetrics();
    constexpr int breite = 90;
    constexpr int höhe = 20;
    fenster.resize(QSize(breite * schrift.averageCharWidth(), höhe * schrift.lineSpacing())
                       .boundedTo(fenster.screen()->availableSize()));
    const Fragezeiger zeiger;
    return fenster.exec() == QDialog::Accepted;
}

} // namespace

void SystemDialoge::meldung(const QString& titel, const QString& text, Meldungsart art) {
    QMessageBox box(QApplication::activeWindow());
    richteEin(box, titel, text, art);
    knopf(box, QMessageBox::Ok, worte_.ok);
    const Fragezeiger zeiger;
    box.exec();
}

void SystemDialoge::bericht(const QString& titel, const QString& text, const QStringList& zeilen) {
    auto* knoepfe = new QDialogButtonBox(QDialogButtonBox::Ok);
    beschrifte(*knoepfe->button(QDialogButtonBox::Ok), worte_.ok);
    (void)zeigeListe(titel, text, zeilen, knoepfe, knoepfe->button(QDialogButtonBox::Ok));
}

/// Escape and closing mean the answer that gives nothing up.
Antwort SystemDialoge::frageMitListe(const Frage& frage) {
    auto* knoepfe = new QDialogButtonBox(QDialogButtonBox::Yes | QDialogButtonBox::No);
    QPushButton* ja = knoepfe->button(QDialogButtonBox::Yes);
    beschrifte(*ja, frage.ja.isEmpty() ? worte_.ja : frage.ja);
    QPushButton* nein = knoepfe->button(QDialogButtonBox::No);
    beschrifte(*nein, frage.nein.isEmpty() ? worte_.nein : frage.nein);
    ergaenzeKuerzel(knoepfe->buttons());
    return zeigeListe(frage.titel, frage.text, frage.zeilen, knoepfe, frage.verwirft ? nein : ja)
               ? Antwort::Ja
               : Antwort::Nein;
}

std::optional<int> SystemDialoge::auswahl(const QString& titel, const QString& text,
                                          const QStringList& worte, int vorgabe) {
    QDialog fenster(QApplication::activeWindow());
    fenster.setObjectName(QStringLiteral("Auswahl"));
    fenster.setWindowTitle(titel);
    auto* satz = new QLabel(text);
    satz->setTextFormat(Qt::PlainText);
    auto* liste = new QComboBox;
    liste->addItems(worte);
    liste->setCurrentIndex(vorgabe);
    liste->setAccessibleName(text);
    satz->setBuddy(liste);
    auto* knoepfe = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    beschrifte(*knoepfe->button(QDialogButtonBox::Ok), worte_.ok);
    beschrifte(*knoepfe->button(QDialogButtonBox::Cancel), worte_.abbrechen);
    QObject::connect(knoepfe, &QDialogButtonBox::accepted, &fenster, &QDialog::accept);
    QObject::connect(knoepfe, &QDialogButtonBox::rejected, &fenster, &QDialog::reject);
    auto* layout = new QVBoxLayout(&fenster);
    layout->addWidget(satz);
    layout->addWidget(liste);
    layout->addWidget(knoepfe);
    const Fragezeiger zeiger;
    return fenster.exec() == QDialog::Accepted ? std::optional(liste->currentIndex())
                                               : std::nullopt;
}

Antwort SystemDialoge::frage(const Frage& frage) {
    if (!frage.zeilen.isEmpty()) {
        return frageMitListe(frage);
    }
    QMessageBox box(QApplication::activeWindow());
    richteEin(box, frage.titel, frage.text, frage.art);
    QPushButton* ja = knopf(box, QMessageBox::Yes, frage.ja.isEmpty() ? worte_.ja : frage.ja);
    QPushButton* nein =
        knopf(box, QMessageBox::No, frage.nein.isEmpty() ? worte_.nein : frage.nein);
    QPushButton* sicherer = frage.neinVerwirft ? ja : nein;
    if (frage.mitAbbrechen) {
        sicherer = knopf(box, QMessageBox::Cancel, worte_.abbrechen);
    }
    ergaenzeKuerzel(box.buttons());
    box.setEscapeButton(sicherer);
    box.setDefaultButton(frage.verwirft ? sicherer : ja);
    const Fragezeiger zeiger;
    box.exec();

    const QAbstractButton* gewählt = box.clickedButton();
    if (gewählt == nullptr) { // closed from elsewhere
        gewählt = sicherer;
    }
    if (gewählt == ja) {
        return Antwort::Ja;
    }
    return gewählt == nein ? Antwort::Nein : Antwort::Abbrechen;
}

QString SystemDialoge::wähleDatei(const QString& titel, const QString& ordner,
                                  const QString& filter) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), titel, ordner, filter,
                                        nullptr, QFileDialog::ReadOnly);
}

QStringList SystemDialoge::wähleDateien(const QString& titel, const QString& ordner,
                                        const QString& filter) {
    return QFileDialog::getOpenFileNames(QApplication::activeWindow(), titel, ordner, filter,
                                         nullptr, QFileDialog::ReadOnly);
}

QString SystemDialoge::wähleOrdner(const QString& titel, const QString& ordner) {
    return QFileDialog::getExistingDirectory(QApplication::activeWindow(), titel, ordner,
                                             QFileDialog::ShowDirsOnly | QFileDialog::ReadOnly);
}

QString SystemDialoge::wähleZieldatei(const QString& titel, const QString& vorschlag,
                                      const QString& filter) {
    QFileDialog chooser(QApplication::activeWindow(), titel, vorschlag, filter);
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    lassDateienInRuhe(chooser);
    return chooser.exec() == QDialog::Accepted ? chooser.selectedFiles().value(0) : QString();
}

} // namespace tarvel
