#include "collection/zuchtschau.h"

#include "collection/jahresbild.h"
#include "collection/kolonieausgabe.h"
#include "collection/ueberlagerung.h"
#include "collection/vergleichsbild.h"
#include "lang/menue.h"
#include "lang/zielwahl.h"
#include "platform/dateiausgabe.h"
#include "platform/fortschritt.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Beschriftung feldname(Merkmalsfeld feld) {
    switch (feld) {
    case Merkmalsfeld::Züchter:
        return Text::Züchter;
    case Merkmalsfeld::Besitzer:
        return Text::Besitzer;
    case Merkmalsfeld::Rasse:
        return Text::Rasse;
    case Merkmalsfeld::Begattung:
        return Text::Begattung;
    default:
        return Text::SpalteKönigin;
    }
}

QString objektname(Merkmalsfeld feld) {
    constexpr std::array<QStringView, Merkmalsfelder.size()> Namen{
        u"cbo_Züchter", u"cbo_Besitzer", u"cbo_Rasse", u"cbo_Begattung", u"cbo_Königin"};
    return Namen.at(static_cast<std::size_t>(feld)).toString();
}

/// Puts words into a list and chooses again what was chosen, where it still stands there.
void fülle(QComboBox& liste, const QString& alle,
           const std::vector<std::pair<QString, QVariant>>& worte) {
    const QSignalBlocker still(liste);
    const QVariant bisher = liste.currentData();
    liste.clear();
    liste.addItem(alle);
    for (const auto& [wort, wert] : worte) {
        liste.addItem(wort, wert);
    }
    liste.setCurrentIndex(bisher.isValid() ? std::max(0, liste.findData(bisher)) : 0);
}

} // namespace

Zuchtschau::Zuchtschau(ZuchtschauUmgebung umgebung, QWidget* parent)
    : QDialog(parent)
    , umgebung_(std::move(umgebung))
    , worte_{umgebung_.texte, umgebung_.regeln.satz.format}
    , modell_(worte_) {
    setObjectName(u"Zuchtschau"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(umgebung_.texte(Meldung::Zuchtübersicht) + u" ["_s +
                   QFileInfo(umgebung_.DatenbankPfad).fileName() + u']');
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(baueFilter());
    layout->addWidget(baueAnsichten(), 1);
    layout->addLayout(baueFuß());
    constexpr QSize Wunsch(1240, 700);
    resize(Wunsch.boundedTo(screen()->availableSize() - QSize(20, 60)));
}

QComboBox* Zuchtschau::neuerFilter(const QString& name, const QString& wort, QWidget& beschriftet) {
    auto* liste = new QComboBox;
    liste->setObjectName(name);
    liste->setAccessibleName(wort);
    // As wide as its place, however long the names are.
    liste->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    liste->setMinimumContentsLength(8);
    liste->setMaxVisibleItems(20);
    static_cast<QLabel&>(beschriftet).setBuddy(liste);
    connect(liste, &QComboBox::currentIndexChanged, this, [this, liste] {
        if (liste == cbo_Tiere_) {
            zeigeFilterwerte();
        }
        filtere();
    });
    return liste;
}

QWidget* Zuchtschau::baueFilter() {
    const Texte& t = umgebung_.texte;
    auto* kasten = new QWidget;
    auto* raster = new QGridLayout(kasten);
    raster->setContentsMargins(0, 0, 0, 0);
    constexpr int JeZeile = 4;
    int zahl = 0;
    const auto füge = [&](const QString& name, const QString& wort) {
        auto* schild = new QLabel(wort);
        QComboBox* liste = neuerFilter(name, wort, *schild);
        raster->addWidget(schild, zahl / JeZeile, 2 * (zahl % JeZeile));
        raster->addWidget(liste, zahl / JeZeile, 2 * (zahl % JeZeile) + 1);
        raster->setColumnStretch(2 * (zahl % JeZeile) + 1, 1);
        ++zahl;
        return liste;
    };
    cbo_Tiere_ = füge(u"cbo_Tiere"_s, t(Text::SpalteGeschlecht));
    {
        const QSignalBlocker still(cbo_Tiere_);
        cbo_Tiere_->addItems({t(Text::Arbeiterinnen), t(Text::Drohnen)});
    }
    textfilter_[Merkmalsfeld::Rasse] = füge(objektname(Merkmalsfeld::Rasse), t(Text::Rasse));
    for (const Merkmalsfeld f : {Merkmalsfeld::Züchter, Merkmalsfeld::Besitzer,
                                 Merkmalsfeld::Begattung, Merkmalsfeld::Königin}) {
        textfilter_[f] = füge(objektname(f), wortlaut(feldname(f), t));
    }
    cbo_Saison_ = füge(u"cbo_Saison"_s, t(Meldung::ÜbersichtSaison));
    cbo_Dpi_ = füge(u"cbo_Dpi"_s, t(Meldung::ÜbersichtAuflösung));
    auto* bef_Alle = new QPushButton(t(Meldung::ÜbersichtFilterLeeren));
    bef_Alle->setObjectName(u"bef_Alle"_s);
    bef_Alle->setAutoDefault(false);
    connect(bef_Alle, &QPushButton::clicked, this, [this] {
        for (QComboBox* liste : findChildren<QComboBox*>()) {
            if (liste != cbo_Tiere_ && liste != cbo_Index_) {
                const QSignalBlocker still(liste);
                liste->setCurrentIndex(0);
            }
        }
        filtere();
    });
    raster->addWidget(bef_Alle, 0, 2 * JeZeile, 2, 1);
    return kasten;
}

QWidget* Zuchtschau::baueAnsichten() {
    const Texte& t = umgebung_.texte;
    ansichten_ = new QTabWidget;
    ansichten_->setObjectName(u"tab_Ansichten"_s);
    tabelle_ = new QTableView;
    tabelle_->setObjectName(u"Tabelle"_s);
    tabelle_->setAccessibleName(t(Meldung::Zuchtübersicht));
    tabelle_->setModel(&modell_);
    tabelle_->setItemDelegateForColumn(SpalteHistogramm, new Histogrammzelle(modell_, tabelle_));
    tabelle_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabelle_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tabelle_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabelle_->setTabKeyNavigation(false);
    tabelle_->setWordWrap(false);
    tabelle_->verticalHeader()->hide();
    tabelle_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    tabelle_->verticalHeader()->setDefaultSectionSize(tabelle_->fontMetrics().height() + 8);
    tabelle_->horizontalHeader()->setSortIndicator(static_cast<int>(Kolonienspalte::Datum),
                                                   Qt::DescendingOrder);
    tabelle_->setSortingEnabled(true);
    // What sums a row up stands where it is seen without scrolling.
    const int vorn = static_cast<int>(Kolonienspalte::Index);
    tabelle_->horizontalHeader()->moveSection(SpalteUrteil, vorn);
    tabelle_->horizontalHeader()->moveSection(SpalteHistogramm, vorn + 1);
    connect(tabelle_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this] { zeigeWahlInTabelle(); });
    connect(tabelle_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { nimmTabellenwahl(); });
    connect(tabelle_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        öffne(*modell_.zeilen()[static_cast<std::size_t>(index.row())]);
    });
    kreuze_ = new Kreuzansicht(worte_);
    kreuze_->beiÖffnen([this](const Koloniewerte& k) { öffne(k); });
    kreuze_->beiWahl([this](const Koloniewerte& k) { wechsleWahl(k); });
    histogramme_ = new Zuchtansicht(u"pic_Histogramme"_s);
    jahre_ = new Zuchtansicht(u"pic_Jahre"_s);
    vergleich_ = new Zuchtansicht(u"pic_Vergleich"_s);

    auto* mitIndex = new QWidget;
    auto* stapel = new QVBoxLayout(mitIndex);
    cbo_Index_ = new QComboBox;
    cbo_Index_->setObjectName(u"cbo_Index"_s);
    cbo_Index_->setAccessibleName(t(Meldung::ÜbersichtIndex));
    for (const Größe g : Größen) {
        cbo_Index_->addItem(vollerName(g, t));
    }
    connect(cbo_Index_, &QComboBox::currentIndexChanged, this, [this] { zeigeAnsicht(); });
    stapel->addWidget(cbo_Index_, 0, Qt::AlignLeft);
    stapel->addWidget(histogramme_, 1);

    ansichten_->addTab(tabelle_, t(Text::Tabelle));
    ansichten_->addTab(kreuze_, t(Meldung::ÜbersichtKreuze));
    ansichten_->addTab(mitIndex, t(Meldung::ÜbersichtHistogramme));
    ansichten_->addTab(jahre_, t(Meldung::ÜbersichtJahre));
    ansichten_->addTab(vergleich_, t(Meldung::ÜbersichtVergleich));
    connect(ansichten_, &QTabWidget::currentChanged, this, [this] { zeigeAnsicht(); });
    return ansichten_;
}

QLayout* Zuchtschau::baueFuß() {
    const Texte& t = umgebung_.texte;
    lab_Stand_ = new QLabel;
    lab_Stand_->setObjectName(u"lab_Stand"_s);
    lab_Stand_->setTextFormat(Qt::PlainText);
    lab_Stand_->setWordWrap(true);
    auto* zeile = new QHBoxLayout;
    zeile->addWidget(lab_Stand_, 1);
    const auto füge = [&](const QString& name, const QString& wort, const QString& tipp,
                          const std::function<void()>& handlung) {
        auto* knopf = new QPushButton(wort);
        knopf->setObjectName(name);
        knopf->setToolTip(tipp);
        knopf->setAutoDefault(false);
        connect(knopf, &QPushButton::clicked, this, handlung);
        zeile->addWidget(knopf);
        return knopf;
    };
    füge(u"bef_Csv"_s, t(Meldung::ÜbersichtCsv), t(Meldung::TippÜbersichtCsv),
         [this] { speichereCsv(); });
    füge(u"bef_Speichern"_s, t(Meldung::ÜbersichtSpeichern), t(Meldung::TippÜbersichtSpeichern),
         [this] { frageUndSpeichere(); });
    bef_Öffnen_ = füge(u"bef_Öffnen"_s, t(Text::MenüÖffnen), t(Meldung::TippUntersuchungÖffnen),
                       [this] { öffne(*gewählt_.front()); });
    füge(u"bef_Abbrechen"_s, t(Text::Schließen), {}, [this] { reject(); });
    return zeile;
}

bool Zuchtschau::lies() {
    const Texte& t = umgebung_.texte;
    std::unique_ptr<Fortschritt> fortschritt;
    const auto stand = [&](int gelesen, int gesamt) {
        constexpr int Schritt = 16; // painting the window takes longer than a row
        if (gelesen % Schritt != 0) {
            return true;
        }
        if (!fortschritt) {
            fortschritt = std::make_unique<Fortschritt>(isVisible() ? this : parentWidget(),
                                                        t(Meldung::Zuchtübersicht),
                                                        t(Text::Abbrechen), gesamt);
        }
        return fortschritt->weiter(gelesen,
                                   t(Meldung::ÜbersichtFortschritt)
                                       .arg(QString::number(gelesen + 1), QString::number(gesamt)));
    };
    try {
        auto neu =
            liesKolonien(umgebung_.DatenbankPfad, umgebung_.speicher, umgebung_.regeln, stand);
        if (!neu) {
            return false;
        }
        const bool erstmals = sammlung_.kolonien.empty();
        gewählt_.clear();
        modell_.zeige({});
        kreuze_->zeige(Kreuzbild());
        // Views that are not shown must not keep colonies that go.
        for (Zuchtansicht* bild : {histogramme_, jahre_, vergleich_}) {
            bild->zeige({});
        }
        sammlung_ = std::move(*neu);
        if (erstmals) {
            const QSignalBlocker still(cbo_Tiere_);
            cbo_Tiere_->setCurrentIndex(static_cast<int>(häufigsteTiere(sammlung_)));
        }
    } catch (const Datenbankfehler& fehler) {
        umgebung_.dialoge.meldung(t(Meldung::Zuchtübersicht), meldungstext(t, fehler),
                                  Meldungsart::Ausruf);
        return false;
    }
    zeigeFilterwerte();
    filtere();
    // By the first rows: a hundred thousand would take long, and show the same.
    tabelle_->horizontalHeader()->setResizeContentsPrecision(100);
    tabelle_->resizeColumnsToContents();
    tabelle_->setColumnWidth(SpalteHistogramm, 110);
    return true;
}

Koloniefilter Zuchtschau::filter() const {
    Koloniefilter f;
    f.tiere = static_cast<Geschlecht>(cbo_Tiere_->currentIndex());
    for (const auto& [feld, liste] : textfilter_) {
        f[feld] = liste->currentData().toString();
    }
    if (const QVariant saison = cbo_Saison_->currentData(); saison.isValid()) {
        f.saison = saison.toInt();
    }
    if (const QVariant dpi = cbo_Dpi_->currentData(); dpi.isValid()) {
        f.dpi = dpi.toInt();
    }
    return f;
}

void Zuchtschau::zeigeFilterwerte() {
    const Texte& t = umgebung_.texte;
    const Filterwerte werte = filterwerte(sammlung_, filter().tiere);
    const QString alle = t(Text::Alle);
    std::vector<std::pair<QString, QVariant>> worte;
    for (const auto& [feld, liste] : textfilter_) {
        worte.clear();
        for (const QString& wort : werte.texte.at(static_cast<std::size_t>(feld))) {
            worte.emplace_back(wort, wort);
        }
        fülle(*liste, alle, worte);
    }
    worte.clear();
    for (const int saison : werte.saisons) {
        worte.emplace_back(QString::number(saison), saison);
    }
    fülle(*cbo_Saison_, alle, worte);
    worte.clear();
    for (const int dpi : werte.dpi) {
        worte.emplace_back(dpitext(dpi, t), dpi);
    }
    fülle(*cbo_Dpi_, alle, worte);
}

void Zuchtschau::filtere() {
    const Kolonieauswahl auswahl = wähle(sammlung_, filter());
    const std::unordered_set<const Koloniewerte*> da(auswahl.begin(), auswahl.end());
    std::erase_if(gewählt_, [&da](const Koloniewerte* k) { return !da.contains(k); });
    modell_.zeige(auswahl);
    zeigeWahlInTabelle();
    zeigeAnsicht();
}

Zuchtschau::Ansicht Zuchtschau::ansicht() const {
    return static_cast<Ansicht>(ansichten_->currentIndex());
}

/// Only the view that is shown is painted.
void Zuchtschau::zeigeAnsicht() {
    const Kolonieregeln& regeln = umgebung_.regeln;
    switch (ansicht()) {
    case Ansicht::Tabelle:
        break;
    case Ansicht::Kreuze:
        kreuze_->zeige(kreuzbild(modell_.zeilen(), gewählt_, regeln));
        break;
    case Ansicht::Histogramme:
        histogramme_->zeige(
            [bild = überlagerungsbild(gewählt_, static_cast<Größe>(cbo_Index_->currentIndex()),
                                      regeln),
             worte = worte_](QPainter& painter, const QRectF& rahmen, const Diagrammstil& stil) {
                maleÜberlagerung(painter, rahmen, bild, worte, stil);
            });
        break;
    case Ansicht::Jahre:
        jahre_->zeige([bild = jahresbild(modell_.zeilen(), filtername(), regeln), worte = worte_](
                          QPainter& painter, const QRectF& rahmen, const Diagrammstil& stil) {
            maleJahre(painter, rahmen, bild, worte, stil);
        });
        break;
    case Ansicht::Vergleich:
        vergleich_->zeige([bild = vergleichsbild(gewählt_, regeln), worte = worte_](
                              QPainter& painter, const QRectF& rahmen, const Diagrammstil& stil) {
            maleVergleich(painter, rahmen, bild, worte, stil);
        });
        break;
    }
    zeigeStand();
}

QString Zuchtschau::filtername() const {
    QStringList teile;
    for (const Merkmalsfeld f : Merkmalsfelder) {
        if (const QString wort = filter()[f]; !wort.isEmpty()) {
            teile << wort;
        }
    }
    return teile.isEmpty() ? QString() : teile.join(u", "_s) + u", "_s + cbo_Tiere_->currentText();
}

void Zuchtschau::zeigeStand() {
    const Texte& t = umgebung_.texte;
    const Kolonieauswahl& zeilen = modell_.zeilen();
    QStringList teile{t(Meldung::ÜbersichtStand)
                          .arg(zeilen.size())
                          .arg(std::ssize(sammlung_.kolonien) + sammlung_.unlesbar.size())};
    const auto nenne = [&](Meldung meldung, auto bedingung) {
        if (const auto zahl = std::count_if(zeilen.begin(), zeilen.end(), bedingung); zahl > 0) {
            teile << t(meldung).arg(zahl);
        }
    };
    if (!gewählt_.empty()) {
        teile << t(Meldung::ÜbersichtGewählt).arg(gewählt_.size());
    }
    if (const int wenige = mitWenigenFlügeln(zeilen); wenige > 0) {
        teile << t(Meldung::ÜbersichtWenigeFlügel).arg(wenige);
    }
    nenne(Meldung::ÜbersichtOhneFlügel, [](const Koloniewerte* k) { return k->flügel() == 0; });
    nenne(Meldung::ÜbersichtTeilweise, [](const Koloniewerte* k) { return k->teilweise; });
    if (!sammlung_.unlesbar.isEmpty()) {
        teile << t(Meldung::ÜbersichtUnlesbar).arg(sammlung_.unlesbar.join(u", "_s));
    }
    if (ansicht() == Ansicht::Tabelle) {
        teile << DVHinweise(zeilen, t);
    }
    if (ansicht() == Ansicht::Kreuze) {
        teile << t(Meldung::ÜbersichtKreuzHinweis);
    }
    lab_Stand_->setText(teile.join(u"  ·  "_s));
    bef_Öffnen_->setEnabled(gewählt_.size() == 1);
}

void Zuchtschau::nimmTabellenwahl() {
    if (zeigtWahl_) {
        return;
    }
    Kolonieauswahl neu;
    for (const QModelIndex& index : tabelle_->selectionModel()->selectedRows()) {
        neu.push_back(modell_.zeilen()[static_cast<std::size_t>(index.row())]);
    }
    // Those chosen before keep their place, new ones follow.
    const std::unordered_set<const Koloniewerte*> da(neu.begin(), neu.end());
    std::erase_if(gewählt_, [&da](const Koloniewerte* k) { return !da.contains(k); });
    const std::unordered_set<const Koloniewerte*> schon(gewählt_.begin(), gewählt_.end());
    std::copy_if(neu.begin(), neu.end(), std::back_inserter(gewählt_),
                 [&schon](const Koloniewerte* k) { return !schon.contains(k); });
    zeigeAnsicht();
}

void Zuchtschau::wechsleWahl(const Koloniewerte& kolonie) {
    if (std::erase(gewählt_, &kolonie) == 0) {
        gewählt_.push_back(&kolonie);
    }
    zeigeWahlInTabelle();
    zeigeAnsicht();
}

void Zuchtschau::zeigeWahlInTabelle() {
    zeigtWahl_ = true;
    QItemSelection auswahl;
    const std::unordered_set<const Koloniewerte*> wahl(gewählt_.begin(), gewählt_.end());
    for (int zeile = 0; !wahl.empty() && zeile < modell_.rowCount(); ++zeile) {
        if (wahl.contains(modell_.zeilen()[static_cast<std::size_t>(zeile)])) {
            auswahl.select(modell_.index(zeile, 0), modell_.index(zeile, 0));
        }
    }
    tabelle_->selectionModel()->select(auswahl, QItemSelectionModel::ClearAndSelect |
                                                    QItemSelectionModel::Rows);
    zeigtWahl_ = false;
}

void Zuchtschau::öffne(const Koloniewerte& kolonie) {
    if (kolonie.UNr.isEmpty()) {
        umgebung_.dialoge.meldung(umgebung_.texte(Meldung::Zuchtübersicht),
                                  umgebung_.texte(Meldung::UntersuchungOhneNummer)
                                      .arg(umgebung_.texte(Text::SpalteNummer)),
                                  Meldungsart::Ausruf);
    } else if (umgebung_.LadenDB(kolonie.Satznummer)) {
        accept();
    }
}

QString Zuchtschau::vorschlag(const QString& endung) const {
    const QString ordner = umgebung_.DatenbankPfad.isEmpty()
                               ? umgebung_.dokumente
                               : QFileInfo(umgebung_.DatenbankPfad).absolutePath();
    return QDir(ordner).filePath(QFileInfo(umgebung_.DatenbankPfad).completeBaseName() + u' ' +
                                 ansichten_->tabText(ansichten_->currentIndex()) + endung);
}

void Zuchtschau::frageUndSpeichere() {
    const Texte& t = umgebung_.texte;
    QStringList muster;
    QStringList endungen;
    for (const Diagrammformat format : diagrammformate()) {
        const QString endung = dateiendung(format);
        muster << t(Meldung::DiagrammDateien).arg(formatname(format)) + u" (*"_s + endung + u')';
        endungen << endung;
    }
    const QString ziel = wähleZiel(t, umgebung_.dialoge,
                                   {.titel = t(Meldung::ÜbersichtSpeichern),
                                    .vorschlag = vorschlag(endungen.front()),
                                    .muster = muster.join(u";;"_s),
                                    .endungen = endungen});
    if (!ziel.isEmpty()) {
        speichereAnsicht(ziel);
    }
}

bool Zuchtschau::speichereAnsicht(const QString& pfad) {
    const Texte& t = umgebung_.texte;
    Zuchtansicht* const ansichten[] = {nullptr, kreuze_, histogramme_, jahre_, vergleich_};
    const Zuchtansicht* gezeigte = ansichten[static_cast<std::size_t>(ansicht())];
    const Diagrammmaler maler =
        gezeigte != nullptr ? gezeigte->druckmaler()
                            : Diagrammmaler([this](QPainter& painter, const QRectF& rahmen) {
                                  maleTabelle(painter, rahmen, modell_.zeilen(), worte_,
                                              Diagrammstil::farbdruck(font()));
                              });
    const QSizeF größe =
        gezeigte != nullptr ? QSizeF(gezeigte->size()) : tabellengröße(modell_.zeilen().size());
    const QString grund = speichereDiagramm(pfad, formatNach(pfad), größe, windowTitle(), maler);
    if (!grund.isEmpty()) {
        umgebung_.dialoge.meldung(
            t(Text::Fehler),
            t(Meldung::DiagrammNichtGespeichert).arg(QDir::toNativeSeparators(pfad), grund),
            Meldungsart::Stopp);
    }
    return grund.isEmpty();
}

void Zuchtschau::speichereCsv() {
    const Texte& t = umgebung_.texte;
    const QString ziel = wähleZiel(t, umgebung_.dialoge,
                                   {.titel = t(Meldung::ÜbersichtCsv),
                                    .vorschlag = vorschlag(u".csv"_s),
                                    .muster = t(Meldung::CsvDateien) + u" (*.csv)"_s,
                                    .endungen = {u".csv"_s}});
    if (ziel.isEmpty()) {
        return;
    }
    if (const auto grund = schreibeDatei(ziel, kolonientabelle(modell_.zeilen()).csv())) {
        umgebung_.dialoge.meldung(t(Text::Fehler), nichtGeschrieben(t, ziel, *grund),
                                  Meldungsart::Stopp);
    }
}

void Zuchtschau::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Refresh) || event->key() == Qt::Key_F5) {
        (void)lies();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (tabelle_->hasFocus() && gewählt_.size() == 1) {
            öffne(*gewählt_.front());
        } else if (auto* knopf = qobject_cast<QPushButton*>(focusWidget())) {
            knopf->click();
        }
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace tarvel
