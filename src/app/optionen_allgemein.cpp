#include "app/optionsseiten.h"
#include "evaluation/klassen.h"
#include "evaluation/rassen.h"
#include "measure/aufloesung.h"
#include "measure/bild.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QLineEdit* textfeld(const QString& name) {
    auto* feld = new QLineEdit;
    feld->setObjectName(name);
    return feld;
}

constexpr int HöchsteFlügelzahl = 200; // a series holds no more

void zahlzeile(const Seitenbau& bau, QFormLayout& formular, const QString& name, int höchste,
               Meldung wort, Meldung tipp, Einstellung id) {
    auto* feld = new QSpinBox;
    feld->setObjectName(name);
    feld->setRange(1, höchste);
    bau.worte.nimm([feld, &worte = bau.worte, tipp] { feld->setToolTip(worte(tipp)); });
    formular.addRow(bau.worte.label(wort, feld), feld);
    bau.eigene.zahl(id, feld);
}

/// What a verdict must rest on so that it is not called preliminary.
QGroupBox* gruppeBeurteilung(const Seitenbau& bau) {
    QGroupBox* gruppe = bau.worte.gruppe(Meldung::VolleBeurteilung, u"fra_Mindestzahl"_s);
    auto* formular = new QFormLayout(gruppe);
    zahlzeile(bau, *formular, u"txt_SollFlügel"_s, HöchsteFlügelzahl, Meldung::SollFlügel,
              Meldung::TippMindestzahl, Einstellung::SollFlügel);
    zahlzeile(bau, *formular, u"txt_SollBienen"_s, HöchsteAnzahl, Meldung::SollBienen,
              Meldung::TippMindestzahl, Einstellung::SollBienen);
    return gruppe;
}

QGroupBox* gruppeUntersuchung(const Seitenbau& bau, QCheckBox* nummer, QLineEdit* kurzzeichen) {
    QGroupBox* gruppe = bau.worte.gruppe(Text::NummerDerUntersuchung, u"fra_Nummer"_s);
    auto* formular = new QFormLayout(gruppe);
    bau.worte.knopf(Text::AutomatischErzeugen, nummer);
    formular->addRow(nummer);
    kurzzeichen->setMaxLength(LängeKurzzeichen);
    kurzzeichen->setMaximumWidth(kurzzeichen->fontMetrics().horizontalAdvance(u"MMMMMM"_s));
    formular->addRow(bau.worte.label(Text::Kurzzeichen, kurzzeichen), kurzzeichen);
    zahlzeile(bau, *formular, u"txt_Zielzahl"_s, HöchsteFlügelzahl, Meldung::Zielzahl,
              Meldung::TippZielzahl, Einstellung::Zielzahl);
    return gruppe;
}

QButtonGroup* zoomknöpfe(QGroupBox* gruppe) {
    auto* layout = new QHBoxLayout(gruppe);
    auto* knöpfe = new QButtonGroup(gruppe);
    for (int zoom = Bild::KleinsterZoom; zoom <= Bild::GrößterZoom; ++zoom) {
        const int index = zoom - Bild::KleinsterZoom;
        auto* knopf = new QRadioButton(u"%1 : 1"_s.arg(zoom));
        knopf->setObjectName(u"opt_Zoom_%1"_s.arg(index));
        knöpfe->addButton(knopf, index);
        layout->addWidget(knopf);
    }
    layout->addStretch();
    return knöpfe;
}

/// The race list as it will be once the dialog is confirmed: the fourth name follows its field.
QComboBox* rassenwahl(const Seitenbau& bau, const QLineEdit* name) {
    auto* liste = new QComboBox;
    liste->setObjectName(u"cbo_RasseStart"_s);
    liste->addItems(rassenliste(bau.umgebung.einstellungen));
    QObject::connect(name, &QLineEdit::textChanged, liste,
                     [liste](const QString& text) { liste->setItemText(Rassenzahl - 1, text); });
    return liste;
}

QGroupBox* gruppeRasse(const Seitenbau& bau, QLineEdit* name) {
    QGroupBox* gruppe = bau.worte.gruppe(Text::Rasse, u"fra_Rasse"_s);
    auto* formular = new QFormLayout(gruppe);
    formular->addRow(bau.worte.label(Text::NameVierteRasse, name), name);
    QComboBox* beimStart = rassenwahl(bau, name);
    formular->addRow(bau.worte.label(Meldung::RasseBeimStart, beimStart), beimStart);
    bau.eigene.auswahl(Einstellung::Rasse, beimStart);
    return gruppe;
}

QGroupBox* gruppeVorschläge(const Seitenbau& bau) {
    QGroupBox* gruppe = bau.worte.gruppe(Meldung::GruppeVorschläge, u"fra_Vorschläge"_s);
    auto* layout = new QVBoxLayout(gruppe);
    layout->setSpacing(0);
    QMargins rand = layout->contentsMargins();
    rand.setTop(rand.top() / 2);
    rand.setBottom(rand.bottom() / 2);
    layout->setContentsMargins(rand);
    const auto schalter = [&](const QString& name, Meldung wort, Meldung tipp, Einstellung id) {
        auto* feld = new QCheckBox;
        feld->setObjectName(name);
        bau.worte.knopf(wort, feld);
        bau.worte.nimm([&worte = bau.worte, feld, tipp] { feld->setToolTip(worte(tipp)); });
        bau.eigene.schalter(id, feld);
        layout->addWidget(feld);
    };
    schalter(u"chk_VorschlagJeFlügel"_s, Meldung::VorschlagJeFlügel, Meldung::TippVorschlagJeFlügel,
             Einstellung::VorschlagJeFlügel);
    schalter(u"chk_PunkteEinrasten"_s, Meldung::PunkteEinrasten, Meldung::TippPunkteEinrasten,
             Einstellung::PunkteEinrasten);
    return gruppe;
}

QCheckBox* feldTagessicherung(const Seitenbau& bau) {
    auto* sicherung = new QCheckBox;
    sicherung->setObjectName(u"chk_Tagessicherung"_s);
    bau.worte.knopf(Meldung::TagessicherungAnlegen, sicherung);
    bau.worte.nimm([&worte = bau.worte, sicherung] {
        sicherung->setToolTip(worte(Meldung::TippTagessicherung));
    });
    bau.eigene.schalter(Einstellung::Tagessicherung, sicherung);
    return sicherung;
}

QGroupBox* gruppeOrdner(const Seitenbau& bau, QLineEdit* ordner, QLineEdit* programm) {
    QGroupBox* gruppe = bau.worte.gruppe(Text::LadenUndSpeichern, u"fra_Ordner"_s);
    auto* raster = new QGridLayout(gruppe);
    raster->addWidget(bau.worte.label(Text::ArbeitsordnerBilddateien, ordner), 0, 0);
    raster->addWidget(ordner, 0, 1);
    raster->addWidget(
        durchsuchen(bau, u"bef_Durchsuchen_0"_s, Text::BeliebigeDateiÖffnen, Text::AlleDateien,
                    u"*"_s, ordner,
                    [ordner](const QString& datei) {
                        ordner->setText(QDir::toNativeSeparators(QFileInfo(datei).absolutePath()));
                    }),
        0, 2);
    raster->addWidget(bau.worte.label(Text::PfadGrafikprogramm, programm), 1, 0);
    raster->addWidget(programm, 1, 1);
    raster->addWidget(durchsuchen(bau, u"bef_Durchsuchen_3"_s, Text::PfadGrafikprogramm,
                                  Text::AlleDateien, u"*"_s, programm,
                                  [programm](const QString& datei) { programm->setText(datei); }),
                      1, 2);
    return gruppe;
}

} // namespace

QWidget* durchsuchen(const Seitenbau& bau, const QString& name, Text titel,
                     Beschriftungen::Wort dateiart, const QString& muster, QLineEdit* feld,
                     std::function<void(const QString&)> nimm) {
    auto* knopf = new QPushButton;
    knopf->setObjectName(name);
    knopf->setAutoDefault(false);
    bau.worte.knopf(Text::Durchsuchen, knopf);
    QObject::connect(knopf, &QPushButton::clicked, feld,
                     [&worte = bau.worte, &dialoge = bau.umgebung.dialoge, titel, dateiart, muster,
                      feld, nimm = std::move(nimm)] {
                         const QString datei = dialoge.wähleDatei(
                             worte(titel), feld->text(), worte(dateiart) + u" ("_s + muster + u')');
                         if (!datei.isEmpty()) {
                             nimm(QDir::toNativeSeparators(datei));
                         }
                     });
    return knopf;
}

QWidget* seiteAllgemeines(const Seitenbau& bau) {
    auto* seite = new QWidget;
    auto* nummer = new QCheckBox;
    nummer->setObjectName(u"chk_Nummer"_s);
    QLineEdit* kurzzeichen = textfeld(u"txt_Kurzzeichen"_s);
    QLineEdit* rasse = textfeld(u"txt_Rasse"_s);
    QLineEdit* ordner = textfeld(u"txt_Arbeit_0"_s);
    QLineEdit* programm = textfeld(u"txt_Arbeit_3"_s);
    // One folder serves for loading and for saving. The second field of the settings follows the
    // first and is not shown.
    QLineEdit* zweiterOrdner = textfeld(u"txt_Arbeit_1"_s);
    zweiterOrdner->setParent(seite);
    zweiterOrdner->hide();
    QObject::connect(ordner, &QLineEdit::textChanged, zweiterOrdner, &QLineEdit::setText);
    QObject::connect(zweiterOrdner, &QLineEdit::textChanged, ordner, &QLineEdit::setText);

    auto* auflösung = new QComboBox;
    auflösung->setObjectName(u"cbo_dpi"_s);
    for (const int dpi : Scannerauflösungen) {
        auflösung->addItem(QString::number(dpi) + u' ' + bau.worte(Meldung::EinheitDpi));
    }
    auto* ohneHaarlänge = new QCheckBox;
    ohneHaarlänge->setObjectName(u"chk_OhneHaarlänge"_s);
    bau.worte.knopf(Text::OhneHaarlänge, ohneHaarlänge);

    QGroupBox* betriebsart = bau.worte.gruppe(Text::Betriebsart, u"fra_Betriebsart"_s);
    QGroupBox* merkmale = bau.worte.gruppe(Text::KörperMerkmale, u"fra_Merkmale"_s);
    QGroupBox* scanner = bau.worte.gruppe(Text::Bild, u"fra_Bild"_s);
    QGroupBox* zoom = bau.worte.gruppe(Text::MenüZoomBeiMessen, u"fra_Zoom"_s);
    QGroupBox* kurvenform = bau.worte.gruppe(Text::Kurvenform, u"fra_Kurvenform"_s);
    QGroupBox* zweiteKurve = bau.worte.gruppe(Text::ZweiteKurve, u"fra_CubiDis"_s);

    Optionsfelder& karte = bau.karte;
    karte.schalter(Einstellung::AutoNummer, nummer);
    karte.text(Einstellung::Kurzzeichen, kurzzeichen);
    karte.auswahl(
        Einstellung::Betriebsart,
        optionsknöpfe(bau.worte, betriebsart, u"opt_Betriebsart"_s,
                      {Text::NurCubitalindex, Text::AlleMessungen, Text::KorrelationAuswahl}));
    karte.auswahl(Einstellung::ScannOptionen, auflösung);
    karte.auswahl(Einstellung::DefaultZoomOptionen, zoomknöpfe(zoom));
    karte.auswahl(Einstellung::Kurvenform,
                  optionsknöpfe(bau.worte, kurvenform, u"opt_Kurvenform"_s,
                                {Meldung::KurvenformBalken, Meldung::KurvenformStufen,
                                 Meldung::KurvenformLinie}));
    karte.auswahl(Einstellung::ZweiteKurve,
                  optionsknöpfe(bau.worte, zweiteKurve, u"opt_CubiDis"_s,
                                {Text::Aus, Text::Hantelindex, Text::Discoidalverschiebung}));
    karte.text(Einstellung::VierteRasse, rasse);
    karte.text(Einstellung::Arbeitsverzeichnis, ordner);
    karte.text(Einstellung::Arbeitsverzeichnis, zweiterOrdner);
    karte.text(Einstellung::Grafikprogramm, programm);
    bau.eigene.schalter(Einstellung::OhneHaarlänge, ohneHaarlänge);

    (new QVBoxLayout(merkmale))->addWidget(ohneHaarlänge);
    auto* scannerzeile = new QFormLayout(scanner);
    scannerzeile->addRow(bau.worte.label(Text::AuflösungDesScanners, auflösung), auflösung);

    auto* links = new QVBoxLayout;
    links->addWidget(gruppeUntersuchung(bau, nummer, kurzzeichen));
    links->addWidget(betriebsart);
    links->addWidget(merkmale);
    links->addWidget(gruppeRasse(bau, rasse));
    links->addWidget(feldTagessicherung(bau));
    links->addStretch();
    auto* rechts = new QVBoxLayout;
    auto* bild = new QHBoxLayout; // beside each other, so that the dialog fits small screens
    bild->addWidget(scanner);
    bild->addWidget(zoom);
    rechts->addLayout(bild);
    for (QWidget* gruppe :
         {gruppeVorschläge(bau), kurvenform, zweiteKurve, gruppeBeurteilung(bau)}) {
        rechts->addWidget(gruppe);
    }
    rechts->addStretch();
    auto* spalten = new QHBoxLayout;
    spalten->addLayout(links, 1);
    spalten->addLayout(rechts, 1);
    auto* layout = new QVBoxLayout(seite);
    layout->addLayout(spalten);
    layout->addWidget(gruppeOrdner(bau, ordner, programm));
    layout->addStretch();
    return seite;
}

} // namespace tarvel
