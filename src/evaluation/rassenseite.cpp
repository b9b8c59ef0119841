#include "evaluation/rassenseite.h"

#include "evaluation/standarddatei.h"
#include "platform/profil.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Linien = Standardgruppe::Grenzlinien;

bool istRasse(int rasse) {
    return rasse >= 1 && rasse <= Rassenzahl;
}

/// The characters that a key press or an input method would type.
QString getippt(const QEvent* ereignis) {
    if (ereignis->type() == QEvent::InputMethod) {
        return static_cast<const QInputMethodEvent*>(ereignis)->commitString();
    }
    const auto* taste = static_cast<const QKeyEvent*>(ereignis);
    // Ctrl and Alt together are the third level of a keyboard and do type.
    const auto umschaltung = taste->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (umschaltung == Qt::ControlModifier || umschaltung == Qt::AltModifier) {
        return {};
    }
    return taste->text();
}

/// What cannot be typed may be pasted. The limit is that of the other numbers of a standard.
bool istAnteil(QStringView text) {
    constexpr double Größter = 32767;
    const double zahl = prozentzahl(text);
    return zahl >= 0 && zahl <= Größter;
}

/// The background of a field, turned towards red.
QColor mangelfarbe(const QPalette& palette) {
    constexpr int Anteil = 4;
    const QColor grund = palette.color(QPalette::Base);
    const auto gemischt = [](int von, int nach) { return von + (nach - von) / Anteil; };
    return {gemischt(grund.red(), 255), gemischt(grund.green(), 0), gemischt(grund.blue(), 0)};
}

/// @p wort with a letter to be chosen by that is not in @p vergeben, where it goes.
QString mitKürzel(QString wort, QString& vergeben) {
    for (qsizetype i = 0; i < wort.size(); ++i) {
        if (wort[i].isLetter() && !vergeben.contains(wort[i].toUpper())) {
            vergeben += wort[i].toUpper();
            return wort.insert(i, u'&');
        }
    }
    return wort;
}

bool verweigert(Tastenfilter filter, const QString& text) {
    return std::ranges::any_of(text, [filter](QChar zeichen) {
        return (zeichen.isPrint() || zeichen == u'\b') && !erlaubt(filter, zeichen);
    });
}

} // namespace

Rassenseite::Rassenseite(const Texte& texte, Zahlenformat format, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , format_(std::move(format))
    , piepston_([] { QApplication::beep(); })
    , tbs_Rasse_(new QTabBar)
    , blatt_(new QWidget)
    , txt_Standardname_(new QLineEdit)
    , txt_Standardversion_(new QLineEdit)
    , lab_Standardstand_(new QLabel)
    , bef_StandardImport_(new QPushButton)
    , bef_StandardExport_(new QPushButton)
    , bef_TestReset_(new QPushButton)
    , bef_Standardwerte_(new QPushButton) {
    tbs_Rasse_->setObjectName(u"tbs_Rasse"_s);
    tbs_Rasse_->setDrawBase(true);
    tbs_Rasse_->setExpanding(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tbs_Rasse_);
    for (int i = 0; i < Rassenzahl; ++i) {
        tbs_Rasse_->addTab(QString());
        auto* karte = new QWidget;
        karte->setObjectName(u"Rassenkarte_%1"_s.arg(i));
        (new QVBoxLayout(karte))->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(karte);
        karten_.at(static_cast<std::size_t>(i)) = karte;
    }
    layout->addStretch();

    auto* raster = new QGridLayout(blatt_);
    raster->setContentsMargins(0, 0, 0, 0);
    raster->addWidget(gruppeArbeiterinnen(), 0, 0);
    raster->addWidget(gruppeDrohnen(), 1, 0);
    raster->addWidget(gruppeLinien(), 0, 1);
    bef_TestReset_->setObjectName(u"bef_TestReset"_s);
    bef_Standardwerte_->setObjectName(u"bef_Standardwerte"_s);
    auto* knöpfe = new QHBoxLayout;
    knöpfe->addStretch();
    for (QPushButton* knopf : {bef_Standardwerte_, bef_TestReset_}) {
        knopf->setAutoDefault(false);
        knöpfe->addWidget(knopf);
    }
    auto* unten = new QVBoxLayout;
    unten->addWidget(gruppeStandard());
    unten->addStretch();
    unten->addLayout(knöpfe);
    raster->addLayout(unten, 1, 1);
    raster->setColumnStretch(0, 1);
    raster->setColumnStretch(1, 1);

    connect(tbs_Rasse_, &QTabBar::currentChanged, this, [this] { tbs_Rasse_Click(); });
    connect(bef_TestReset_, &QPushButton::clicked, this, [this] { bef_TestReset_Click(); });
    connect(bef_Standardwerte_, &QPushButton::clicked, this, [this] {
        gezeigt() = Rassestandard();
        neuBenannt_.at(gezeigte_) = false;
        zeige();
    });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
    tbs_Rasse_Click();
}

Rassenseite::~Rassenseite() {
    delete blatt_; // a field that loses the focus is still taken over
}

void Rassenseite::beschrifte() {
    for (const auto& beschriftung : beschriftungen_) {
        beschriftung();
    }
    int breitester = 0;
    for (const QLabel* kopf : zeilenköpfe_) {
        breitester = std::max(breitester, kopf->sizeHint().width());
    }
    for (QLabel* kopf : zeilenköpfe_) {
        kopf->setFixedWidth(breitester);
    }
    bef_TestReset_->setText(texte_(Meldung::KnopfZurücksetzen));
    bef_TestReset_->setToolTip(texte_(Meldung::TippZurücksetzen));
    bef_Standardwerte_->setText(texte_(Meldung::KnopfStandardwerte));
    bef_Standardwerte_->setToolTip(texte_(Text::Standardwerte));
    for (const Feld& f : felder_) {
        QString name = texte_(f.wort);
        if (!f.code.isEmpty()) {
            name += u' ' + f.code;
        }
        switch (f.zeile->art) {
        case Werteart::Prozent:
            f.eingabe->setToolTip(texte_(Meldung::HöchsterAnteil));
            break;
        case Werteart::Bereich:
            f.eingabe->setToolTip(texte_(f.wort == Text::Nebengipfel ? Meldung::NebengipfelBereich
                                                                     : Meldung::Klassenbereich));
            break;
        case Werteart::InZehnteln:
            f.eingabe->setToolTip(texte_(Meldung::RassenmittelCI));
            break;
        default:
            f.eingabe->setToolTip(texte_(Text::Grenzlinien));
            break;
        }
        f.eingabe->setAccessibleName(name);
    }
    for (QLineEdit* eingabe : {txt_Standardname_, txt_Standardversion_}) {
        eingabe->setToolTip(texte_(Meldung::TippStandardname));
    }
    QString vergeben;
    for (const auto& [knopf, wort, tipp] :
         {std::tuple{bef_StandardImport_, texte_(Text::Importieren), Meldung::TippStandardImport},
          {bef_StandardExport_, texte_(Meldung::Exportieren), Meldung::TippStandardExport}}) {
        knopf->setText(mitKürzel(wort, vergeben));
        knopf->setToolTip(texte_(tipp));
    }
    zeigeHinweise();
    zeigeGeltende();
    zeigeKennung();
}

void Rassenseite::setzeRassen(const QStringList& namen) {
    for (int i = 0; i < Rassenzahl && i < namen.size(); ++i) {
        tbs_Rasse_->setTabText(i, namen.at(i));
    }
}

void Rassenseite::lade(const Einstellungen& einstellungen, int rasse) {
    if (!istRasse(rasse)) {
        return;
    }
    for (int nummer = 1; nummer <= Rassenzahl; ++nummer) {
        Rassestandard& standard = standards_.at(static_cast<std::size_t>(nummer - 1));
        LadenMerkmaleArbeiterinnen(standard, nummer, einstellungen);
        LadenMerkmaleDrohnen(standard, nummer, einstellungen);
        LadenGrenzlinien(standard, nummer, einstellungen);
        LadenKennung(standard, nummer, einstellungen);
    }
    neuBenannt_ = {};
    geladene_ = standards_;
    gezeigte_ = static_cast<std::size_t>(rasse - 1);
    const QSignalBlocker still(tbs_Rasse_);
    tbs_Rasse_->setCurrentIndex(rasse - 1);
    zeige();
    tbs_Rasse_Click();
}

void Rassenseite::verwirf(const Einstellungen& einstellungen, int rasse) {
    standards_ = geladene_;
    zeige();
    lade(einstellungen, rasse);
}

bool Rassenseite::speichere(Profil& ini, Benutzerspeicher& speicher, int rasse) {
    vervollständige();
    for (std::size_t i = 0; i < standards_.size(); ++i) {
        besiegle(i);
    }
    bool kopiert = true;
    const auto eine = [&](int nummer) {
        const Rassestandard& s = standard(nummer);
        SpeichernKarte5Arbeiterinnen(s, nummer, ini);
        SpeichernKarte5Drohnen(s, nummer, ini);
        SpeichernKennung(s, nummer, ini);
        kopiert = SpeichernKarte5Linien(s, nummer, ini, speicher) && kopiert;
    };
    if (istRasse(rasse)) {
        eine(rasse);
    }
    for (int nummer = 1; nummer <= Rassenzahl; ++nummer) {
        if (nummer != rasse &&
            standard(nummer) != geladene_.at(static_cast<std::size_t>(nummer - 1))) {
            eine(nummer);
        }
    }
    return kopiert;
}

void Rassenseite::gespeichert() {
    geladene_ = standards_;
}

void Rassenseite::nichtGespeichert(const Einstellungen& einstellungen, Benutzerspeicher& speicher,
                                   int rasse) {
    Profil verworfen(einstellungen.IniPfad());
    for (int nummer = 1; nummer <= Rassenzahl; ++nummer) {
        const Rassestandard& vorher = geladene_.at(static_cast<std::size_t>(nummer - 1));
        if (nummer == rasse || standard(nummer) != vorher) {
            static_cast<void>(SpeichernKarte5Linien(vorher, nummer, verworfen, speicher));
        }
    }
}

const Rassestandard& Rassenseite::standard(int rasse) const {
    return standards_.at(static_cast<std::size_t>(rasse - 1));
}

void Rassenseite::tbs_Rasse_Click() {
    // A click on a tab leaves the focus in a field. It must go before the field shows another race.
    if (blatt_->isAncestorOf(QApplication::focusWidget())) {
        tbs_Rasse_->setFocus();
    }
    vervollständige();
    gezeigte_ = static_cast<std::size_t>(tbs_Rasse_->currentIndex());
    karten_.at(gezeigte_)->layout()->addWidget(blatt_);
    for (std::size_t i = 0; i < karten_.size(); ++i) {
        karten_.at(i)->setVisible(i == gezeigte_);
    }
    zeige();
}

void Rassenseite::bef_TestReset_Click() {
    Rassestandard& standard = gezeigt();
    standard = geladene_.at(gezeigte_);
    if (quelle_ != nullptr) {
        const int rasse = static_cast<int>(gezeigte_) + 1;
        LadenMerkmaleArbeiterinnen(standard, rasse, *quelle_);
        LadenMerkmaleDrohnen(standard, rasse, *quelle_);
        LadenGrenzlinien(standard, rasse, *quelle_);
        LadenKennung(standard, rasse, *quelle_);
    }
    neuBenannt_.at(gezeigte_) = false;
    zeige();
}

void Rassenseite::cbo_DV_Click(int position) {
    setze(Linien, u"DV ><", position);
    for (QComboBox* liste : cbo_DV_) {
        liste->setCurrentIndex(position);
    }
}

void Rassenseite::setze(Standardgruppe gruppe, QStringView schlüssel, int wert) {
    übernehme(standardzeile(gruppe, schlüssel), gezeigt(), QString::number(wert));
    zeigeKennung();
}

void Rassenseite::zeige() {
    const Rassestandard& s = gezeigt();
    for (const Feld& f : felder_) {
        f.eingabe->setText(anzeigetext(*f.zeile, s, format_));
        f.eingabe->setCursorPosition(0);
    }
    chk_CIMittel_[0]->setChecked(s.arbeiterinnen.mittel.CIMittel != 0);
    chk_CIMittel_[1]->setChecked(s.drohnen.mittel.CIMittel != 0);
    opt_Korrelation_[s.linien.nachKruber() ? 0 : 1]->setChecked(true);
    for (QComboBox* liste : cbo_DV_) {
        liste->setCurrentIndex(s.linien.darunter() ? 1 : 0);
    }
    cbo_CIMittel_[0]->setCurrentIndex(s.arbeiterinnen.mittel.unter() ? 1 : 0);
    cbo_CIMittel_[1]->setCurrentIndex(s.drohnen.mittel.unter() ? 1 : 0);
    txt_Standardname_->setText(s.kennung.Name);
    txt_Standardversion_->setText(s.kennung.Version);
    zeigeHinweise();
    zeigeGeltende();
    zeigeKennung();
}

/// Brings the text of a field into its usual form and takes it over. A decimal beyond what can be
/// stored, or a percentage that can be no share, gives way to the value before. What is no range of
/// classes stays as it was typed, so that it can be mended. Whoever defines a boundary line here
/// wants it to apply.
void Rassenseite::verlasse(const Feld& f) {
    const Standardzeile& zeile = *f.zeile;
    const bool text = istText(zeile.art);
    const QString getippt = f.eingabe->text();
    const QString vorher = anzeigetext(zeile, gezeigt(), format_);
    if (!text && getippt == vorher) {
        return;
    }
    const bool mangelhaft = zeile.art == Werteart::Bereich && bereichsmangel(getippt);
    if (zeile.art != Werteart::Prozent || istAnteil(getippt)) {
        const bool wörtlich = !text || mangelhaft;
        übernehme(zeile, gezeigt(), wörtlich ? getippt : normalisiert(zeile.art, getippt, format_));
    }
    const QString nachher = anzeigetext(zeile, gezeigt(), format_);
    f.eingabe->setText(nachher);
    if (zeile.gruppe == Linien && nachher != vorher) {
        setze(Linien, u"Korrelation", 0);
        opt_Korrelation_[1]->setChecked(true);
    }
    zeigeHinweise();
    zeigeGeltende();
    zeigeKennung();
}

QLineEdit* Rassenseite::mangelhaftesFeld() {
    vervollständige();
    for (int i = 0; i < Rassenzahl; ++i) {
        // The race that is shown comes first.
        const std::size_t rasse = (gezeigte_ + static_cast<std::size_t>(i)) % standards_.size();
        for (const Feld& f : felder_) {
            if (f.zeile->art == Werteart::Bereich &&
                bereichsmangel(f.zeile->text(standards_.at(rasse)))) {
                tbs_Rasse_->setCurrentIndex(static_cast<int>(rasse));
                return f.eingabe;
            }
        }
    }
    return nullptr;
}

/// Marks ranges that are none and says why below the group, where those marks stand, too, that can
/// keep no sample from passing.
void Rassenseite::zeigeHinweise() {
    constexpr double Alles = 100;
    std::array<QStringList, 2> mängel;
    std::array<QStringList, 2> wirkungslose;
    for (const Feld& f : felder_) {
        const std::size_t gruppe = f.zeile->gruppe == Standardgruppe::Drohnen ? 1 : 0;
        QString hinweis = f.eingabe->toolTip();
        if (f.zeile->art == Werteart::Prozent && prozentzahl(f.eingabe->text()) >= Alles) {
            wirkungslose.at(gruppe) << f.eingabe->accessibleName();
            hinweis += u". "_s + texte_(Meldung::HinweisWirkungslos);
        }
        QPalette farben;
        if (f.zeile->art == Werteart::Bereich) {
            if (const auto mangel = bereichsmangel(f.eingabe->text())) {
                const QString grund = bereichstext(*mangel, texte_);
                mängel.at(gruppe) << u"⚠ "_s + f.eingabe->accessibleName() + u": "_s + grund;
                hinweis = grund;
                farben.setColor(QPalette::Base, mangelfarbe(palette()));
            }
            f.eingabe->setPalette(farben);
        }
        f.eingabe->setAccessibleDescription(hinweis);
    }
    for (std::size_t i = 0; i < lab_Hinweis_.size(); ++i) {
        lab_Mangel_.at(i)->setText(mängel.at(i).join(u'\n'));
        lab_Mangel_.at(i)->setVisible(!mängel.at(i).isEmpty());
        lab_Hinweis_.at(i)->setText(
            texte_(Meldung::KriterienWirkungslos).arg(wirkungslose.at(i).join(u", "_s)));
        lab_Hinweis_.at(i)->setVisible(!wirkungslose.at(i).isEmpty());
    }
}

/// With the lines after Kruber those that are stored step back, and those in force stand beside.
void Rassenseite::zeigeGeltende() {
    const bool nachKruber = gezeigt().linien.nachKruber();
    Rassestandard kruber;
    for (const Feld& f : felder_) {
        if (f.zeile->gruppe != Linien) {
            continue;
        }
        QPalette farben;
        if (nachKruber) {
            farben.setColor(QPalette::Text, palette().color(QPalette::Disabled, QPalette::Text));
        }
        f.eingabe->setPalette(farben);
        const QString geltend =
            texte_(Meldung::GeltenderWert).arg(anzeigetext(*f.zeile, kruber, format_));
        f.geltend->setText(geltend);
        f.geltend->setVisible(nachKruber);
        f.eingabe->setAccessibleDescription(nachKruber ? geltend : f.eingabe->toolTip());
    }
}

/// The same for what was typed into fields that have not been left yet.
void Rassenseite::vervollständige() {
    for (const Feld& f : felder_) {
        if (f.eingabe->isModified()) {
            verlasse(f);
        }
    }
    benenne();
}

bool Rassenseite::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (ereignis->type() != QEvent::KeyPress && ereignis->type() != QEvent::InputMethod) {
        return QWidget::eventFilter(objekt, ereignis);
    }
    const auto gefunden =
        std::ranges::find_if(felder_, [&](const Feld& f) { return f.eingabe == objekt; });
    const Tastenfilter filter =
        gefunden == felder_.end() ? Tastenfilter::Nichts : tastenfilter(gefunden->zeile->art);
    if (!verweigert(filter, getippt(ereignis))) {
        return QWidget::eventFilter(objekt, ereignis);
    }
    if (filter != Tastenfilter::Nichts) {
        piepston_();
    }
    return true;
}

} // namespace tarvel
