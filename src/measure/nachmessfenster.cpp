#include "measure/nachmessfenster.h"

#include "measure/bild.h"
#include "measure/fluegelmarken.h"
#include "measure/indexmuster.h"
#include "measure/lupe.h"
#include "measure/lupenpaar.h"
#include "measure/tasten.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array Spalten{&Indizes::CI, &Indizes::HI, &Indizes::DV};
/// Differences of the discoidal shift are smaller than the tenths that it is written in.
constexpr std::array<QStringView, 3> Muster{muster::CI, muster::HI, u"0.00"};

QLabel* absatz(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

Nachmessfenster::Nachmessfenster(const Texte& texte, Zahlenformat format,
                                 std::vector<Nachmessflügel> flügel, const Probenstreuung& streuung,
                                 QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , format_(std::move(format))
    , flügel_(std::move(flügel))
    , streuung_(streuung)
    , messung_(keine_, format_)
    , seiten_(new QStackedLayout(this))
    , lab_Flügel_(new QLabel)
    , lab_Hinweis_(absatz(texte_(Meldung::WiederholprobeAnleitung)))
    , bild_(new Bild)
    , lupen_(new Lupenpaar(*bild_)) {
    setObjectName(u"Nachmessen"_s);
    setWindowTitle(texte_(Meldung::WiederholprobeTitel));
    lab_Flügel_->setObjectName(u"lab_Nachmessflügel"_s);
    QFont fett = lab_Flügel_->font();
    fett.setBold(true);
    lab_Flügel_->setFont(fett);
    lab_Hinweis_->setObjectName(u"lab_Nachmesshinweis"_s);
    bild_->setObjectName(u"Nachmessbild"_s);
    lupen_->setParent(this);
    auto* seite = new QWidget;
    auto* layout = new QGridLayout(seite);
    layout->addWidget(lab_Flügel_, 0, 0);
    layout->addWidget(bild_, 1, 0);
    layout->addWidget(&lupen_->feste(), 1, 1, Qt::AlignTop);
    layout->addWidget(lab_Hinweis_, 2, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(1, 1);
    seiten_->addWidget(seite);
    bild_->beiDruck([this](const Zeigerereignis& e) { drück(e); });
    bild_->beiBewegung([this](const Zeigerereignis& e) { beweg(e); });
    bild_->beiLoslassen([this](const Zeigerereignis&) { gezogen_ = 0; });
    bild_->beiTaste([this](QKeyEvent* e) { return taste(*e); });
    bild_->setFocus();
    resize(960, 640);
    zeigeFlügel();
}

Nachmessfenster::~Nachmessfenster() = default;

void Nachmessfenster::zeigeFlügel() {
    const Nachmessflügel& f = aktueller();
    lab_Flügel_->setText(
        texte_(Meldung::WiederholprobeFlügel).arg(ergebnis_.size() + 1).arg(flügel_.size()));
    messung_.setzeMessart(f.erste.messart);
    messung_.setzeZoomfaktor(f.erste.aufnahme.Zoomfaktor);
    messung_.setzeAuflösung(f.erste.aufnahme.dpi);
    messung_.zeigtBild({.größe = f.bild.size(), .marke = {}});
    messung_.NeuerFlügel();
    bild_->setzeBild(f.bild);
    bild_->setzeZoomfaktor(f.erste.aufnahme.Zoomfaktor);
    bild_->zeige(QRectF(f.bild.rect()).center());
    lupen_->setzeBild(f.bild, f.erste.aufnahme.Zoomfaktor);
    zeigeMarken();
}

void Nachmessfenster::zeigeMarken() {
    const std::vector<Marke> marken = punktmarken(messung_.punkte());
    bild_->setzeMarken(marken);
    lupen_->setzeMarken(marken);
}

void Nachmessfenster::drück(const Zeigerereignis& e) {
    if (e.taste == Qt::LeftButton && e.umschalt.testFlag(Qt::ControlModifier)) {
        constexpr float Griffweite = 14; // zoomed pixels, as in the measuring view
        const Messpunkte& p = messung_.punkte();
        float kleinster = Griffweite;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            const float abstand = std::hypot(p.PunktX[i] - e.x, p.PunktY[i] - e.y);
            if (p.gemessen(i) && abstand < kleinster) {
                kleinster = abstand;
                gezogen_ = i;
            }
        }
        return;
    }
    const Flügelmessung vorher = messung_.flügel();
    if (e.taste == Qt::RightButton) {
        if (vorher.punkte.vollständig(vorher.messart)) {
            nimm(vorher, messung_.übernimmFertige());
        }
    } else if (e.taste == Qt::LeftButton) {
        nimm(vorher,
             messung_.Bild_MouseDown(Maustaste::Links, umschaltung::von(e.umschalt), e.x, e.y));
    }
}

void Nachmessfenster::beweg(const Zeigerereignis& e) {
    messung_.Bild_MouseMove(Maustaste::Links, umschaltung::von(e.umschalt), e.x, e.y);
    if (gezogen_ != 0 && e.tasten.testFlag(Qt::LeftButton)) {
        messung_.zieh(gezogen_, e.x, e.y);
        zeigeMarken();
    }
    lupen_->zeige({e.x, e.y});
}

bool Nachmessfenster::taste(const QKeyEvent& e) {
    if (e.key() == Qt::Key_Escape) {
        reject();
        return true;
    }
    const int code = tastencode(e);
    const int umschalt = umschaltung::von(e.modifiers());
    const Flügelmessung vorher = messung_.flügel();
    const bool fertig = vorher.punkte.vollständig(vorher.messart);
    if ((code == taste::Eingabe && !fertig) || (code >= taste::Eins && !bild_->zeigerHier())) {
        return true;
    }
    if (code == taste::Rücktaste) {
        messung_.NeuerFlügel();
        zeigeMarken();
        return true;
    }
    const Messergebnis ergebnis = messung_.Bild_KeyDown(code, umschalt);
    nimm(vorher, ergebnis);
    return ergebnis.verstanden;
}

void Nachmessfenster::nimm(const Flügelmessung& flügel, const Messergebnis& ergebnis) {
    if (ergebnis.fehler) {
        lab_Hinweis_->setText(texte_(*ergebnis.fehler == Rechenfehler::WurzelNegativ
                                         ? Meldung::WurzelNegativ
                                         : Meldung::PunkteFallenZusammen));
        return;
    }
    if (!ergebnis.übernommen) {
        zeigeMarken();
        return;
    }
    const auto indizes = [](const Flügelmessung& m) {
        return berechneIndizes(m.punkte, m.messart, m.aufnahme);
    };
    ergebnis_.push_back({indizes(aktueller().erste), indizes(flügel), {}});
    lab_Hinweis_->setText(texte_(Meldung::WiederholprobeAnleitung));
    if (ergebnis_.size() == flügel_.size()) {
        zeigeErgebnis();
    } else {
        zeigeFlügel();
    }
}

void Nachmessfenster::setzeVorschläge(std::vector<std::optional<Indizes>> vorschläge) {
    vorschläge_ = std::move(vorschläge);
    if (ergebnisseite_) {
        zeigeErgebnis();
    }
}

void Nachmessfenster::schreibe(QGridLayout& tafel, int zeile, const QString& name,
                               const QString& kürzel, const Probenstreuung& werte) const {
    tafel.addWidget(new QLabel(name), zeile, 0);
    for (std::size_t i = 0; i < Spalten.size(); ++i) {
        auto* label = new QLabel(werte[i] ? Format(*werte[i], Muster[i], format_) : u"–"_s);
        label->setObjectName(u"lab_Nachmess_%1_%2"_s.arg(kürzel).arg(i));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        tafel.addWidget(label, zeile, static_cast<int>(i) + 1);
    }
}

void Nachmessfenster::zeigeErgebnis() {
    for (std::size_t i = 0; vorschläge_ && i < ergebnis_.size(); ++i) {
        ergebnis_[i].vorschlag = vorschläge_->at(i);
    }
    const auto fehler = [this](Nachmessvergleich vergleich) {
        Probenstreuung werte;
        for (std::size_t i = 0; i < Spalten.size(); ++i) {
            werte[i] = einzelmessfehler(ergebnis_, Spalten[i], vergleich);
        }
        return werte;
    };
    ergebnisseite_ = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(ergebnisseite_.get());
    layout->addWidget(absatz(texte_(Meldung::WiederholprobeErgebnis).arg(ergebnis_.size())));
    auto* tafel = new QGridLayout;
    tafel->setHorizontalSpacing(24);
    const std::array köpfe{Text::CI, Text::HI, Text::DV};
    for (std::size_t i = 0; i < köpfe.size(); ++i) {
        tafel->addWidget(new QLabel(texte_(köpfe[i])), 0, static_cast<int>(i) + 1, Qt::AlignRight);
    }
    schreibe(*tafel, 1, texte_(Meldung::WiederholprobeEigener), u"Sie"_s,
             fehler(Nachmessvergleich::ErsteMitZweiter));
    const auto gefunden = std::count_if(ergebnis_.begin(), ergebnis_.end(),
                                        [](const Nachmessung& m) { return m.vorschlag; });
    if (gefunden >= WenigsteNachmessFlügel) {
        schreibe(*tafel, 2, texte_(Meldung::WiederholprobeVorschlag), u"Vorschlag"_s,
                 fehler(Nachmessvergleich::ErsteMitVorschlag));
    }
    schreibe(*tafel, 3, texte_(Meldung::WiederholprobeStreuung), u"Probe"_s, streuung_);
    layout->addLayout(tafel);
    if (vorschläge_ && gefunden < std::ssize(ergebnis_)) {
        layout->addWidget(absatz(texte_(Meldung::WiederholprobeOhneVorschlag).arg(gefunden)));
    }
    layout->addWidget(absatz(texte_(Meldung::WiederholprobeErklärung)));
    layout->addStretch();
    auto* schließen = new QPushButton(texte_(Text::Schließen));
    schließen->setObjectName(u"bef_Schließen"_s);
    schließen->setDefault(true);
    connect(schließen, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(schließen, 0, Qt::AlignRight);
    seiten_->setCurrentIndex(seiten_->addWidget(ergebnisseite_.get()));
    schließen->setFocus();
    resize(560, ergebnisseite_->sizeHint().height());
}

} // namespace tarvel
