#include "app/briefkopfvorschau.h"
#include "app/optionsseiten.h"
#include "platform/vektorbild.h"
#include "print/protokolloptionen.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Verbandsbild = 40; // pixels
constexpr int GrößterAbstandOben = 250;

QSpinBox* zahlfeld(const QString& name, int kleinste, int größte) {
    auto* feld = new QSpinBox;
    feld->setObjectName(name);
    feld->setRange(kleinste, größte);
    return feld;
}

QSpinBox* millimeter(const Seitenbau& bau, const QString& name, Text tipp) {
    const double größter = tipp == Text::AbstandVonOben ? GrößterAbstandOben : PapierA4.width();
    QSpinBox* feld = zahlfeld(name, 0, static_cast<int>(größter));
    bau.worte.nimm([&worte = bau.worte, feld, tipp] {
        feld->setSuffix(u' ' + worte(Meldung::EinheitMillimeter));
        feld->setToolTip(worte(tipp));
    });
    return feld;
}

QFontComboBox* schriftwahl(const QString& name) {
    auto* feld = new QFontComboBox;
    feld->setObjectName(name);
    feld->setMinimumContentsLength(14);
    feld->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return feld;
}

QCheckBox* schalter(const Seitenbau& bau, const QString& name, Beschriftungen::Wort wort) {
    auto* feld = new QCheckBox;
    feld->setObjectName(name);
    bau.worte.knopf(wort, feld);
    return feld;
}

/// Emblems are printed on paper; a dark window would swallow their lines.
QIcon verbandsbild(Verband verband) {
    QPixmap bild(Verbandsbild, Verbandsbild);
    bild.fill(Qt::white);
    Briefkopf kopf;
    kopf.Ikone = verband;
    QPainter painter(&bild);
    painter.setRenderHint(QPainter::Antialiasing);
    Briefkopfgrafik(kopf).paint(painter, bild.rect().adjusted(2, 2, -2, -2));
    return bild;
}

struct Briefkopffelder {
    QSpinBox* TextLinks;
    QSpinBox* TextOben;
    std::array<QLineEdit*, 3> txt_Bearbeiter;
    QFontComboBox* SchriftArt;
    QSpinBox* SchriftGröße;
    QCheckBox* Fett;
    QCheckBox* Kursiv;
    QCheckBox* chk_Zeilen;
    QLineEdit* Datei;
    QSpinBox* GrafikLinks;
    QSpinBox* GrafikOben;
    QSpinBox* GrafikHöhe;
    QButtonGroup* opt_Verband;

    [[nodiscard]] Briefkopf briefkopf() const {
        Briefkopf kopf;
        kopf.TextLinks = TextLinks->value();
        kopf.TextOben = TextOben->value();
        kopf.Name = txt_Bearbeiter[0]->text();
        kopf.Straße = txt_Bearbeiter[1]->text();
        kopf.Ort = txt_Bearbeiter[2]->text();
        kopf.SchriftArt = SchriftArt->currentText();
        kopf.SchriftGröße = SchriftGröße->value();
        kopf.SchriftFett = Fett->isChecked();
        kopf.SchriftKursiv = Kursiv->isChecked();
        kopf.Zeilenwechsel = chk_Zeilen->isChecked();
        kopf.GrafikLinks = GrafikLinks->value();
        kopf.GrafikOben = GrafikOben->value();
        kopf.GrafikHöhe = GrafikHöhe->value();
        kopf.Ikone = verband(opt_Verband->checkedId());
        kopf.Datei = Datei->text();
        return kopf;
    }

    /// Calls @p geändert after every change of any of them.
    void beobachte(QObject* empfänger, const std::function<void()>& geändert) const {
        for (const QSpinBox* feld :
             {TextLinks, TextOben, SchriftGröße, GrafikLinks, GrafikOben, GrafikHöhe}) {
            QObject::connect(feld, &QSpinBox::valueChanged, empfänger, geändert);
        }
        for (const QLineEdit* feld :
             {txt_Bearbeiter[0], txt_Bearbeiter[1], txt_Bearbeiter[2], Datei}) {
            QObject::connect(feld, &QLineEdit::textChanged, empfänger, geändert);
        }
        QObject::connect(SchriftArt, &QComboBox::editTextChanged, empfänger, geändert);
        for (const QCheckBox* feld : {Fett, Kursiv, chk_Zeilen}) {
            QObject::connect(feld, &QCheckBox::toggled, empfänger, geändert);
        }
        QObject::connect(opt_Verband, &QButtonGroup::idToggled, empfänger, geändert);
    }

    void verbinde(Optionsfelder& karte) const {
        karte.zahl(Einstellung::TextLinks, TextLinks);
        karte.zahl(Einstellung::TextOben, TextOben);
        karte.text(Einstellung::Name, txt_Bearbeiter[0]);
        karte.text(Einstellung::Straße, txt_Bearbeiter[1]);
        karte.text(Einstellung::Ort, txt_Bearbeiter[2]);
        karte.text(Einstellung::SchriftArt, SchriftArt);
        karte.zahl(Einstellung::SchriftGröße, SchriftGröße);
        karte.schalter(Einstellung::SchriftFett, Fett);
        karte.schalter(Einstellung::SchriftKursiv, Kursiv);
        karte.schalter(Einstellung::Zeilenwechsel, chk_Zeilen);
        karte.text(Einstellung::Datei, Datei);
        karte.zahl(Einstellung::GrafikLinks, GrafikLinks);
        karte.zahl(Einstellung::GrafikOben, GrafikOben);
        karte.auswahl(Einstellung::Ikone, opt_Verband);
    }
};

QHBoxLayout* abstände(const Seitenbau& bau, QSpinBox* links, QSpinBox* oben) {
    auto* zeile = new QHBoxLayout;
    for (const auto& [wort, feld] : {std::pair{Text::Links, links}, {Text::Oben, oben}}) {
        zeile->addWidget(bau.worte.label(wort, feld));
        zeile->addWidget(feld);
    }
    zeile->addStretch();
    return zeile;
}

QGroupBox* gruppeText(const Seitenbau& bau, Briefkopffelder& felder) {
    QGroupBox* gruppe = bau.worte.gruppe(Text::Briefkopf, u"fra_Briefkopf"_s);
    auto* formular = new QFormLayout(gruppe);
    formular->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const Text worte[] = {Text::Name, Text::Straße, Text::Ort};
    for (std::size_t i = 0; i < felder.txt_Bearbeiter.size(); ++i) {
        auto* feld = new QLineEdit;
        feld->setObjectName(u"txt_Bearbeiter_%1"_s.arg(i));
        felder.txt_Bearbeiter.at(i) = feld;
        formular->addRow(bau.worte.label(worte[i], feld), feld);
    }
    felder.chk_Zeilen = schalter(bau, u"chk_Zeilen"_s, Text::ZeilenwechselNachNameUndStraße);
    formular->addRow(felder.chk_Zeilen);
    felder.SchriftArt = schriftwahl(u"cbo_SchriftArt_0"_s);
    formular->addRow(bau.worte.label(Text::Schrift, felder.SchriftArt), felder.SchriftArt);
    felder.SchriftGröße = zahlfeld(u"txt_SchriftGröße"_s, 4, 72);
    bau.worte.nimm([&w = bau.worte, feld = felder.SchriftGröße] {
        feld->setSuffix(u' ' + w(Meldung::EinheitPunkt));
    });
    felder.Fett = schalter(bau, u"chk_Fett"_s, Meldung::SchriftFett);
    felder.Kursiv = schalter(bau, u"chk_Kursiv_0"_s, Meldung::SchriftKursiv);
    auto* schnitt = new QHBoxLayout;
    for (QWidget* teil :
         {static_cast<QWidget*>(felder.SchriftGröße), static_cast<QWidget*>(felder.Fett),
          static_cast<QWidget*>(felder.Kursiv)}) {
        schnitt->addWidget(teil);
    }
    schnitt->addStretch();
    formular->addRow(bau.worte.label(Meldung::Schriftgröße, felder.SchriftGröße), schnitt);
    felder.TextLinks = millimeter(bau, u"txt_TextLinks"_s, Text::AbstandVonLinks);
    felder.TextOben = millimeter(bau, u"txt_TextOben"_s, Text::AbstandVonOben);
    formular->addRow(abstände(bau, felder.TextLinks, felder.TextOben));
    return gruppe;
}

QLayout* verbandswahl(const Seitenbau& bau, Briefkopffelder& felder) {
    auto* knöpfe = new QGridLayout;
    felder.opt_Verband = new QButtonGroup(knöpfe);
    for (int i = 0; i < Verbandzahl; ++i) {
        auto* knopf = new QRadioButton;
        knopf->setObjectName(u"opt_Verband_%1"_s.arg(i));
        if (static_cast<Verband>(i) != Verband::Andere) {
            knopf->setIcon(verbandsbild(static_cast<Verband>(i)));
            knopf->setIconSize(QSize(Verbandsbild, Verbandsbild));
        }
        felder.opt_Verband->addButton(knopf, i);
        knöpfe->addWidget(knopf, i / 2, i % 2);
    }
    bau.worte.nimm([&texte = bau.umgebung.texte, gruppe = felder.opt_Verband] {
        const QStringList namen = verbandsnamen(texte);
        for (int i = 0; i < Verbandzahl; ++i) {
            gruppe->button(i)->setText(namen.at(i));
        }
    });
    return knöpfe;
}

QGroupBox* gruppeGrafik(const Seitenbau& bau, Briefkopffelder& felder) {
    QGroupBox* gruppe = bau.worte.gruppe(Text::GrafikFürBriefkopf, u"fra_Grafik"_s);
    auto* layout = new QVBoxLayout(gruppe);
    layout->addLayout(verbandswahl(bau, felder));

    felder.Datei = new QLineEdit;
    felder.Datei->setObjectName(u"txt_Datei"_s);
    layout->addWidget(bau.worte.label(Text::DateiMitGrafik, felder.Datei));
    QWidget* suchen = durchsuchen(
        bau, u"bef_Datei"_s, Text::GewünschteDateiÖffnen, Text::AlleBilddateien,
        u"*.bmp *.gif *.jpg *.jpeg *.png"_s + (kannSvg() ? u" *.svg"_s : QString()), felder.Datei,
        [feld = felder.Datei](const QString& datei) { feld->setText(datei); });
    auto* dateizeile = new QHBoxLayout;
    dateizeile->addWidget(felder.Datei, 1);
    dateizeile->addWidget(suchen);
    layout->addLayout(dateizeile);
    const auto erlaube = [gruppe = felder.opt_Verband, feld = felder.Datei, suchen] {
        const bool andere = verband(gruppe->checkedId()) == Verband::Andere;
        feld->setEnabled(andere);
        suchen->setEnabled(andere);
    };
    QObject::connect(felder.opt_Verband, &QButtonGroup::idToggled, gruppe, erlaube);
    erlaube();

    felder.GrafikLinks = millimeter(bau, u"txt_GrafikLinks"_s, Text::AbstandVonLinks);
    felder.GrafikOben = millimeter(bau, u"txt_GrafikOben"_s, Text::AbstandVonOben);
    felder.GrafikHöhe = zahlfeld(u"txt_GrafikHöhe"_s, KleinsteGrafikhöhe, GrößteGrafikhöhe);
    bau.worte.nimm([&worte = bau.worte, feld = felder.GrafikHöhe] {
        feld->setSuffix(u' ' + worte(Meldung::EinheitMillimeter));
        feld->setToolTip(worte(Meldung::TippGrafikhöhe));
    });
    QHBoxLayout* maße = abstände(bau, felder.GrafikLinks, felder.GrafikOben);
    maße->insertWidget(maße->count() - 1,
                       bau.worte.label(Meldung::BriefkopfGrafikhöhe, felder.GrafikHöhe));
    maße->insertWidget(maße->count() - 1, felder.GrafikHöhe);
    layout->addLayout(maße);
    return gruppe;
}

/// Why the chosen picture is not shown; empty when it is.
QString grafikfehler(const Beschriftungen& worte, const QString& datei, Grafikfehler fehler) {
    if (fehler == Grafikfehler::Keiner) {
        return {};
    }
    return fehler == Grafikfehler::NichtGefunden ? worte(Text::DateiNichtGefunden)
                                                 : worte(meldung(fehler)).arg(datei);
}

} // namespace

QWidget* seiteBriefkopf(const Seitenbau& bau) {
    auto* seite = new QWidget;
    Briefkopffelder felder{};
    QGroupBox* text = gruppeText(bau, felder);
    QGroupBox* grafik = gruppeGrafik(bau, felder);
    felder.verbinde(bau.karte);
    bau.eigene.zahl(Einstellung::GrafikHöhe, felder.GrafikHöhe);

    auto* vorschau = new Briefkopfvorschau;
    auto* fehler = new QLabel;
    fehler->setObjectName(u"lab_Grafikfehler"_s);
    fehler->setTextFormat(Qt::PlainText);
    fehler->setWordWrap(true);
    const auto zeige = [&worte = bau.worte, felder, vorschau, fehler] {
        const Briefkopf kopf = felder.briefkopf();
        vorschau->zeige(kopf);
        fehler->setText(grafikfehler(worte, kopf.Datei, vorschau->grafikfehler()));
    };
    felder.beobachte(seite, zeige);
    bau.worte.nimm(zeige);

    auto* spalten = new QHBoxLayout(seite);
    auto* links = new QVBoxLayout;
    links->addWidget(text);
    links->addStretch();
    auto* rechts = new QVBoxLayout;
    rechts->addWidget(bau.worte.label(Meldung::BriefkopfVorschau, vorschau));
    rechts->addWidget(vorschau);
    rechts->addWidget(fehler);
    rechts->addWidget(grafik);
    rechts->addStretch();
    spalten->addLayout(links, 1);
    spalten->addLayout(rechts, 1);
    return seite;
}

QWidget* seiteProtokoll(const Seitenbau& bau) {
    auto* seite = new QWidget;
    QFontComboBox* schrift = schriftwahl(u"cbo_SchriftArt_1"_s);
    QCheckBox* kursiv = schalter(bau, u"chk_Kursiv_1"_s, Meldung::SchriftKursiv);
    QCheckBox* übersetzen = schalter(bau, u"chk_Übersetzen"_s, Text::ProtokollÜbersetzen);
    QCheckBox* beurteilung = schalter(bau, u"chk_Beurteilung"_s, Text::AutomatischeBeurteilung);
    QGroupBox* art = bau.worte.gruppe(Text::ZahlDerSeiten, u"fra_Protokoll"_s);
    QButtonGroup* arten =
        optionsknöpfe(bau.worte, art, u"opt_Protokoll"_s,
                      {Text::EineSeiteCubitalindex, Text::ZweiSeitenCubitalindexUndKorrelation,
                       Text::EineSeiteCubitalindexUndDiscoidalverschiebung});
    QGroupBox* datum = bau.worte.gruppe(Text::SpalteDatum, u"fra_Datum"_s);
    QButtonGroup* daten = optionsknöpfe(bau.worte, datum, u"opt_Datum"_s,
                                        {Text::DatumHeuteLang, Text::DatumHeuteKurz,
                                         Text::DatumÄnderungLang, Text::DatumÄnderungKurz});

    Optionsfelder& karte = bau.karte;
    karte.text(Einstellung::ProtokollSchriftArt, schrift);
    karte.schalter(Einstellung::ProtokollSchriftKursiv, kursiv);
    karte.nurSchreiben(Einstellung::Seiten, [arten] {
        return seitenzahl(static_cast<Protokollart>(arten->checkedId()));
    });
    karte.schalter(Einstellung::Übersetzen, übersetzen);
    karte.auswahl(Einstellung::Datum, daten);
    karte.schalter(Einstellung::Beurteilung, beurteilung);
    karte.auswahl(Einstellung::Art, arten);

    QGroupBox* inhalt = bau.worte.gruppe(Text::Protokoll, u"fra_Inhalt"_s);
    auto* formular = new QFormLayout(inhalt);
    formular->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    formular->addRow(beurteilung);
    formular->addRow(übersetzen);
    QCheckBox* anhang = schalter(bau, u"chk_Anhang"_s, Meldung::ProtokollMitAnhang);
    bau.worte.nimm(
        [&worte = bau.worte, anhang] { anhang->setToolTip(worte(Meldung::TippAnhang)); });
    bau.eigene.schalter(Einstellung::Anhang, anhang);
    formular->addRow(anhang);
    formular->addRow(bau.worte.label(Text::Schrift, schrift), schrift);
    formular->addRow(QString(), kursiv);

    QGroupBox* warnung = bau.worte.gruppe(Text::WarnungFehlendeMesswerte, u"fra_Warnung"_s);
    auto* warnungen = new QVBoxLayout(warnung);
    const std::pair<Einstellung, Beschriftungen::Wort> gründe[] = {
        {Einstellung::WarnungCubitalindex, Text::Cubitalindex},
        {Einstellung::WarnungHantelindex, Text::HantelindexUndDV},
        {Einstellung::WarnungMerkmale, Text::KörperMerkmale},
        {Einstellung::WarnungKönigin, Meldung::LeisteVolksdaten}};
    int nummer = 0;
    for (const auto& [einstellung, wort] : gründe) {
        QCheckBox* feld = schalter(bau, u"chk_Warnung_%1"_s.arg(nummer++), wort);
        bau.eigene.schalter(einstellung, feld);
        warnungen->addWidget(feld);
    }

    auto* raster = new QGridLayout(seite);
    raster->addWidget(art, 0, 0);
    raster->addWidget(inhalt, 0, 1);
    raster->addWidget(datum, 1, 0);
    raster->addWidget(warnung, 1, 1);
    raster->setColumnStretch(0, 1);
    raster->setColumnStretch(1, 1);
    raster->setRowStretch(2, 1);
    return seite;
}

} // namespace tarvel
