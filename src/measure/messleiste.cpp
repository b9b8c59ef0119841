#include "measure/messleiste.h"

#include "measure/aufloesung.h"
#include "measure/fluegelskizze.h"
#include "platform/zahlen.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Messleiste::Messleiste(const Texte& texte, Reihenmodelle& modelle, QWidget* lupe, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , modelle_(modelle)
    , fra_Fein_(new QGroupBox)
    , lab_Flügel_(new QLabel)
    , lab_Fortschritt_(new QLabel)
    , skizze_(new Flügelskizze)
    , lab_Nächster_(new QLabel)
    , lab_Werte_(new QLabel)
    , lab_dpi_(new QLabel)
    , cbo_dpi_(new QComboBox)
    , bef_Bildauflösung_(new QPushButton)
    , bef_Flügelauflösung_(new QPushButton)
    , reihe_(new Reihenansicht(texte, modelle, u"Leiste"_s, Qt::Vertical))
    , lab_Statistik_(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    lab_Flügel_->setObjectName(u"lab_Flügel"_s);
    QFont groß = lab_Flügel_->font();
    groß.setBold(true);
    lab_Flügel_->setFont(groß);
    lab_Flügel_->setWordWrap(true); // a repeat must not widen the panel, and so move the picture
    lab_Fortschritt_->setObjectName(u"lab_Fortschritt"_s);
    lab_Fortschritt_->setAlignment(Qt::AlignRight);
    auto* kopf = new QHBoxLayout;
    kopf->addWidget(lab_Flügel_, 1);
    kopf->addWidget(lab_Fortschritt_);
    layout->addLayout(kopf);
    layout->addWidget(skizze_);
    lab_Nächster_->setObjectName(u"lab_Nächster"_s);
    lab_Nächster_->setWordWrap(true);
    // Two lines for most descriptions: what lies below must not jump from point to point.
    lab_Nächster_->setMinimumHeight(2 * lab_Nächster_->fontMetrics().lineSpacing());
    lab_Nächster_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    layout->addWidget(lab_Nächster_);
    lab_Werte_->setObjectName(u"lab_Werte"_s);
    lab_Werte_->setEnabled(false); // greyed: nothing of it is in the series yet
    layout->addWidget(lab_Werte_);
    layout->addWidget(lupe);
    layout->addWidget(feineinstellung());

    cbo_dpi_->setObjectName(u"cbo_dpi"_s);
    for (const int dpi : Scannerauflösungen) {
        cbo_dpi_->addItem(QString(), dpi);
    }
    bef_Bildauflösung_->setObjectName(u"bef_Bildauflösung"_s);
    bef_Flügelauflösung_->setObjectName(u"bef_Flügelauflösung"_s);
    bef_Bildauflösung_->hide();
    bef_Flügelauflösung_->hide();
    lab_dpi_->setBuddy(cbo_dpi_);
    auto* auflösung = new QVBoxLayout;
    auflösung->setSpacing(2);
    auflösung->addWidget(lab_dpi_);
    auflösung->addWidget(cbo_dpi_);
    auflösung->addWidget(bef_Bildauflösung_);
    auflösung->addWidget(bef_Flügelauflösung_);
    layout->addLayout(auflösung);
    layout->addWidget(reihe_, 1);
    lab_Statistik_->setObjectName(u"lab_Statistik"_s);
    lab_Statistik_->setWordWrap(true);
    layout->addWidget(lab_Statistik_);
    connect(&modelle_.kennzahlen(), &QAbstractItemModel::modelReset, this,
            [this] { zeigeMittelwerte(); });

    connect(cbo_dpi_, &QComboBox::activated, this, [this](int index) {
        if (cbo_dpi_Click_) {
            cbo_dpi_Click_(cbo_dpi_->itemData(index).toInt());
        }
    });
    for (const auto& [knopf, dpi] : {std::pair{bef_Bildauflösung_, &bildauflösung_},
                                     {bef_Flügelauflösung_, &flügelauflösung_}}) {
        connect(knopf, &QPushButton::clicked, this, [this, wert = dpi] {
            if (cbo_dpi_Click_ && *wert) {
                cbo_dpi_Click_(**wert);
            }
        });
    }
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

QWidget* Messleiste::feineinstellung() {
    constexpr int Spalten = 4;
    fra_Fein_->setObjectName(u"fra_Fein"_s);
    auto* raster = new QGridLayout(fra_Fein_);
    raster->setVerticalSpacing(2);
    for (int nummer = 1; nummer <= Messpunkte::Anzahl; ++nummer) {
        auto* knopf = new QRadioButton(QString::number(nummer));
        knopf->setObjectName(u"opt_Fein_%1"_s.arg(nummer));
        // The digit keys select points on the picture; Tab must not walk through eight buttons, and
        // a click beside a number must not take the arrow keys away from the picture.
        knopf->setFocusPolicy(Qt::NoFocus);
        connect(knopf, &QRadioButton::clicked, this, [this, nummer] {
            if (opt_Fein_Click_) {
                opt_Fein_Click_(nummer);
            }
        });
        opt_Fein_.at(static_cast<std::size_t>(nummer)) = knopf;
        raster->addWidget(knopf, (nummer - 1) / Spalten, (nummer - 1) % Spalten);
    }
    return fra_Fein_;
}

void Messleiste::beschrifte() {
    fra_Fein_->setTitle(texte_(Text::Feineinstellung));
    lab_dpi_->setText(texte_(Text::AuflösungDesScanners));
    cbo_dpi_->setAccessibleName(texte_(Text::AuflösungDesScanners));
    cbo_dpi_->setToolTip(texte_(Meldung::TippAuflösung));
    bef_Bildauflösung_->setToolTip(texte_(Meldung::TippBildauflösung));
    bef_Flügelauflösung_->setToolTip(texte_(Meldung::TippFlügelauflösungNehmen));
    zeigeAuflösung(cbo_dpi_->currentData().toInt(), bildauflösung_, flügelauflösung_);
    for (int nummer = 1; nummer <= Messpunkte::Anzahl; ++nummer) {
        opt_Fein_.at(static_cast<std::size_t>(nummer))
            ->setToolTip(texte_(messpunktbeschreibung(nummer)));
    }
    lab_Werte_->setToolTip(texte_(Meldung::TippWerteVorab));
    zeigeFlügeltext();
    zeigeNächsten();
    zeigeWerte();
    zeigeMittelwerte();
}

void Messleiste::setzeZiel(int flügelzahl) {
    ziel_ = std::max(1, flügelzahl);
    zeigeMittelwerte();
}

void Messleiste::zeigePunkte(const Messpunkte& punkte, Messart messart, const Aufnahme& aufnahme) {
    punkte_ = punkte;
    messart_ = messart;
    aufnahme_ = aufnahme;
    zeigeNächsten();
    zeigeWerte();
    for (int nummer = 1; nummer <= Messpunkte::Anzahl; ++nummer) {
        QRadioButton* knopf = opt_Fein_.at(static_cast<std::size_t>(nummer));
        knopf->setEnabled(benutzt(messart, nummer));
        QFont schrift = font();
        schrift.setBold(punkte.gemessen(nummer)); // a point that is set already
        knopf->setFont(schrift);
        // No button of a group of exclusive ones can be unset otherwise.
        knopf->setAutoExclusive(false);
        knopf->setChecked(punkte.GewählterPunkt == nummer);
        knopf->setAutoExclusive(true);
    }
}

void Messleiste::zeigeNächsten() {
    const int nächster = punkte_.vollständig(messart_) ? 0 : punkte_.nächster(messart_);
    skizze_->zeige(punkte_, messart_, nächster);
    QString punkt = texte_(messpunktbeschreibung(nächster));
    punkt.replace(u"  "_s, u", "_s); // number and place stand in columns elsewhere
    const QString text = nächster == 0 ? texte_(Meldung::AllePunkteGesetzt)
                                       : texte_(Meldung::NächsterPunkt).arg(punkt);
    lab_Nächster_->setText(text);
    skizze_->setAccessibleName(text);
}

void Messleiste::zeigeWerte() {
    const Indextexte werte =
        indextexte(berechneIndizes(punkte_, messart_, aufnahme_), modelle_.format());
    QStringList teile;
    for (const auto& [name, wert] :
         {std::pair{Text::CI, werte.CI}, {Text::HI, werte.HI}, {Text::DV, werte.DV}}) {
        if (misstAchtPunkte(messart_) || name == Text::CI) {
            teile << texte_(name) + u'=' + (wert.isEmpty() ? u"–"_s : wert);
        }
    }
    lab_Werte_->setText(teile.join(u"  "_s));
}

void Messleiste::zeigeAuflösung(int dpi, std::optional<int> bild, std::optional<int> flügel) {
    bildauflösung_ = bild;
    flügelauflösung_ = flügel;
    // Behind those that the settings name by their position; others belong to a picture only.
    const auto gebraucht = [&](int wert) {
        return scannerposition(wert) >= 0 || wert == dpi || wert == bild || wert == flügel;
    };
    for (int i = cbo_dpi_->count() - 1; i >= 0; --i) {
        if (!gebraucht(cbo_dpi_->itemData(i).toInt())) {
            cbo_dpi_->removeItem(i);
        }
    }
    for (const int wert : {dpi, bild.value_or(0), flügel.value_or(0)}) {
        if (wert > 0 && cbo_dpi_->findData(wert) < 0) {
            cbo_dpi_->addItem(QString(), wert);
        }
    }
    for (int i = 0; i < cbo_dpi_->count(); ++i) {
        cbo_dpi_->setItemText(i, cbo_dpi_->itemData(i).toString() + u' ' +
                                     texte_(Meldung::EinheitDpi));
    }
    cbo_dpi_->setCurrentIndex(cbo_dpi_->findData(dpi));
    bef_Bildauflösung_->setVisible(bild && *bild != dpi);
    bef_Bildauflösung_->setText(texte_(Meldung::BildauflösungÜbernehmen).arg(bild.value_or(0)));
    bef_Flügelauflösung_->setVisible(flügel && *flügel != dpi && flügel != bild);
    bef_Flügelauflösung_->setText(texte_(Meldung::FlügelauflösungNehmen).arg(flügel.value_or(0)));
}

void Messleiste::zeigeFlügel(int nummer, bool wiederholt) {
    flügel_ = nummer;
    wiederholt_ = wiederholt;
    zeigeFlügeltext();
}

void Messleiste::zeigeFlügeltext() {
    const Meldung text = wiederholt_ ? Meldung::FlügelWirdWiederholt : Meldung::FlügelNummer;
    lab_Flügel_->setText(texte_(text).arg(dreistellig(flügel_)));
}

void Messleiste::zeigeMittelwerte() {
    const auto kennzahl = [this](int zeile, int spalte) {
        return modelle_.kennzahlen().index(zeile, spalte).data().toString();
    };
    QStringList teile;
    for (const auto& [spalte, name] : {std::pair{Flügeltabelle::CI, Text::CI},
                                       {Flügeltabelle::HI, Text::HI},
                                       {Flügeltabelle::DV, Text::DV}}) {
        const QString mittel = kennzahl(Kennzahlentabelle::Mittelwert, spalte);
        if (!mittel.isEmpty()) {
            teile << texte_(name) + u'=' + mittel;
        }
    }
    QString anzahl = kennzahl(Kennzahlentabelle::Anzahl, Flügeltabelle::CI);
    if (modelle_.ausgelassene() > 0) {
        anzahl += u", "_s + texte_(Meldung::AnzahlAusgelassen).arg(modelle_.ausgelassene());
    }
    const QString fortschritt =
        texte_(modelle_.ausgelassene() > 0 ? Meldung::FortschrittAusgelassen : Meldung::Fortschritt)
            .arg(modelle_.flügelzahl())
            .arg(ziel_);
    lab_Fortschritt_->setText(modelle_.ausgelassene() > 0 ? fortschritt.arg(modelle_.ausgelassene())
                                                          : fortschritt);
    lab_Statistik_->setText(teile.isEmpty() ? texte_(Meldung::NochKeineMessung)
                                            : texte_(Text::Mittelwert) + u" ("_s + anzahl +
                                                  u"):\n"_s + teile.join(u"  "_s));
}

} // namespace tarvel
