#include "evaluation/rassenseite.h"

#include "platform/profil.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
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

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Arbeit = Standardgruppe::Arbeiterinnen;
constexpr auto Drohn = Standardgruppe::Drohnen;
constexpr auto Linien = Standardgruppe::Grenzlinien;

constexpr int LängsterText = 127; // what the settings file gives back

const Standardzeile& standardzeile(Standardgruppe gruppe, QStringView schlüssel) {
    const auto tabelle = standardtabelle();
    return *std::ranges::find_if(tabelle, [&](const Standardzeile& zeile) {
        return zeile.gruppe == gruppe && zeile.schlüssel == schlüssel;
    });
}

bool istRasse(int rasse) {
    return rasse >= 1 && rasse <= Rassenzahl;
}

/// The code that ends a key: "1R" of "Panzer 1R", "F" of "Filzbinden F_".
QString codeAus(QStringView schlüssel) {
    QString code = schlüssel.sliced(schlüssel.lastIndexOf(u' ') + 1).toString();
    code.remove(u'_');
    return code;
}

int breite(const QWidget* feld, QStringView text) {
    constexpr int Rahmen = 16;
    return feld->fontMetrics().horizontalAdvance(text.toString()) + Rahmen;
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
    raster->addLayout(knöpfe, 1, 1, Qt::AlignBottom);
    raster->setColumnStretch(0, 1);
    raster->setColumnStretch(1, 1);

    connect(tbs_Rasse_, &QTabBar::currentChanged, this, [this] { tbs_Rasse_Click(); });
    connect(bef_TestReset_, &QPushButton::clicked, this, [this] { bef_TestReset_Click(); });
    connect(bef_Standardwerte_, &QPushButton::clicked, this, [this] {
        gezeigt() = Rassestandard();
        zeige();
    });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
    tbs_Rasse_Click();
}

Rassenseite::~Rassenseite() {
    delete blatt_; // a field that loses the focus is still taken over
}

QLabel* Rassenseite::label(Text wort) {
    auto* label = new QLabel;
    beschriftungen_.emplace_back([this, label, wort] { label->setText(texte_(wort)); });
    return label;
}

/// Label of a row of a group. Those of all groups are equally wide, so their fields stand in line.
QLabel* Rassenseite::zeilenkopf(Text wort, const QString& nummer) {
    auto* kopf = new QLabel;
    beschriftungen_.emplace_back([this, kopf, wort, nummer] {
        kopf->setText(nummer.isEmpty() ? texte_(wort) : texte_(wort) + u' ' + nummer);
    });
    zeilenköpfe_.push_back(kopf);
    return kopf;
}

QLineEdit* Rassenseite::feld(QStringView schlüssel, Standardgruppe gruppe, const QString& name,
                             Text wort, const QString& code) {
    auto* eingabe = new QLineEdit;
    eingabe->setObjectName(name);
    eingabe->setMaxLength(LängsterText);
    eingabe->setAlignment(Qt::AlignRight);
    eingabe->installEventFilter(this);
    const Standardzeile& zeile = standardzeile(gruppe, schlüssel);
    eingabe->setFixedWidth(breite(eingabe, u"00-00%"));
    felder_.push_back({&zeile, eingabe, wort, code});
    connect(eingabe, &QLineEdit::editingFinished, this,
            [this, stelle = felder_.size() - 1] { verlasse(felder_.at(stelle)); });
    return eingabe;
}

/// The allowed shares of one group of marks, side by side with their codes.
QWidget* Rassenseite::merkmalzeile(Standardgruppe gruppe, const QString& name, Text wort,
                                   const std::vector<QStringView>& schlüssel) {
    constexpr int Zellen = 4;
    auto* zeile = new QWidget;
    auto* layout = new QGridLayout(zeile);
    layout->setContentsMargins(0, 0, 0, 0);
    int nummer = 0;
    for (const QStringView s : schlüssel) {
        const QString code = codeAus(s);
        auto* beschriftung = new QLabel(code);
        beschriftung->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        beschriftung->setMinimumWidth(breite(beschriftung, u"sch") - 12);
        QLineEdit* eingabe = feld(s, gruppe, name + u'_' + QString::number(nummer), wort, code);
        beschriftung->setBuddy(eingabe);
        layout->addWidget(beschriftung, 0, 2 * nummer);
        layout->addWidget(eingabe, 0, 2 * nummer + 1);
        ++nummer;
    }
    layout->setColumnStretch(2 * Zellen, 1);
    return zeile;
}

QWidget* Rassenseite::mittelwert(Standardgruppe gruppe, QStringView schlüssel) {
    const std::size_t index = gruppe == Arbeit ? 0 : 1;
    auto* schalter = new QCheckBox;
    schalter->setObjectName(u"chk_CIMittel_%1"_s.arg(index));
    chk_CIMittel_.at(index) = schalter;
    beschriftungen_.emplace_back([this, schalter] {
        schalter->setText(texte_(Text::CI));
        schalter->setAccessibleName(texte_(Meldung::RassenmittelCI));
    });
    connect(schalter, &QCheckBox::clicked, this,
            [this, gruppe, schlüssel](bool gesetzt) { setze(gruppe, schlüssel, gesetzt ? 1 : 0); });
    auto* zeile = new QWidget;
    auto* layout = new QHBoxLayout(zeile);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(schalter);
    layout->addWidget(feld(u"Mittelwert", gruppe, u"txt_CIVal_%1"_s.arg(index), Text::Mittelwert));
    layout->addStretch();
    return zeile;
}

/// A range of classes and, if it has one, the share of wings allowed in it.
QWidget* Rassenseite::klassenzeile(Standardgruppe gruppe, QStringView bereich, QStringView anteil) {
    auto* zeile = new QWidget;
    auto* layout = new QHBoxLayout(zeile);
    layout->setContentsMargins(0, 0, 0, 0);
    const QString nummer = bereich.last(1).toString();
    const Text wort = anteil.isEmpty() ? Text::Nebengipfel : Text::Klasse;
    const QString code = anteil.isEmpty() ? QString() : nummer;
    layout->addWidget(feld(bereich, gruppe, u"txt_CIK_"_s + nummer, wort, code));
    if (!anteil.isEmpty()) {
        layout->addWidget(new QLabel(u"≤"_s));
        layout->addWidget(
            feld(anteil, gruppe, u"txt_CI_"_s + (gruppe == Drohn ? u"2"_s : nummer), wort, code));
    }
    layout->addStretch();
    return zeile;
}

QGroupBox* Rassenseite::gruppeArbeiterinnen() {
    auto* gruppe = new QGroupBox;
    gruppe->setObjectName(u"fra_Arbeiterinnen"_s);
    beschriftungen_.emplace_back([this, gruppe] { gruppe->setTitle(texte_(Text::Arbeiterinnen)); });
    auto* formular = new QFormLayout(gruppe);
    formular->addRow(zeilenkopf(Text::Panzerzeichen),
                     merkmalzeile(Arbeit, u"txt_Panzer"_s, Text::Panzerzeichen,
                                  {u"Panzer O", u"Panzer E", u"Panzer 1R", u"Panzer 2R"}));
    formular->addRow(zeilenkopf(Text::Haarlänge),
                     merkmalzeile(Arbeit, u"txt_Haarlänge"_s, Text::Haarlänge,
                                  {u"Haarlänge k", u"Haarlänge m", u"Haarlänge l"}));
    formular->addRow(zeilenkopf(Text::Filzbinden),
                     merkmalzeile(Arbeit, u"txt_Filz"_s, Text::Filzbinden,
                                  {u"Filzbinden F_", u"Filzbinden ff", u"Filzbinden f"}));
    formular->addRow(zeilenkopf(Text::Mittelwert), mittelwert(Arbeit, u"CI Mittel A"));
    formular->addRow(zeilenkopf(Text::Klasse, u"0"_s), klassenzeile(Arbeit, u"Klasse 0", u"max 0"));
    formular->addRow(zeilenkopf(Text::Klasse, u"1"_s), klassenzeile(Arbeit, u"Klasse 1", u"max 1"));
    formular->addRow(zeilenkopf(Text::Nebengipfel), klassenzeile(Arbeit, u"Klasse 2", {}));
    return gruppe;
}

QGroupBox* Rassenseite::gruppeDrohnen() {
    auto* gruppe = new QGroupBox;
    gruppe->setObjectName(u"fra_Drohnen"_s);
    beschriftungen_.emplace_back([this, gruppe] { gruppe->setTitle(texte_(Text::Drohnen)); });
    auto* formular = new QFormLayout(gruppe);
    formular->addRow(zeilenkopf(Text::Panzerzeichen),
                     merkmalzeile(Drohn, u"txt_PanzerD"_s, Text::Panzerzeichen,
                                  {u"Panzer Drohn O", u"Panzer Drohn I", u"Panzer Drohn 1R",
                                   u"Panzer Drohn 2R"}));
    formular->addRow(
        zeilenkopf(Text::Haarfarbe),
        merkmalzeile(Drohn, u"txt_Haarfarbe"_s, Text::Haarfarbe,
                     {u"Haarfarbe gr", u"Haarfarbe br", u"Haarfarbe ge", u"Haarfarbe sch"}));
    formular->addRow(zeilenkopf(Text::Mittelwert), mittelwert(Drohn, u"CI Mittel D"));
    formular->addRow(zeilenkopf(Text::Klasse, u"3"_s), klassenzeile(Drohn, u"Klasse 3", u"max 3"));
    return gruppe;
}

QGroupBox* Rassenseite::gruppeLinien() {
    auto* gruppe = new QGroupBox;
    gruppe->setObjectName(u"fra_Grenzlinien"_s);
    beschriftungen_.emplace_back([this, gruppe] { gruppe->setTitle(texte_(Text::Grenzlinien)); });
    auto* layout = new QVBoxLayout(gruppe);
    auto* optionen = new QButtonGroup(gruppe);
    const Text worte[] = {Text::GrenzlinienNachKruber, Text::GrenzlinienHierDefiniert};
    for (int i = 0; i < 2; ++i) {
        auto* option = new QRadioButton;
        option->setObjectName(u"opt_Korrelation_%1"_s.arg(i));
        optionen->addButton(option, i);
        layout->addWidget(option);
        opt_Korrelation_.at(static_cast<std::size_t>(i)) = option;
        beschriftungen_.emplace_back(
            [this, option, wort = worte[i]] { option->setText(texte_(wort)); });
    }
    connect(optionen, &QButtonGroup::idClicked, this,
            [this](int id) { setze(Linien, u"Korrelation", id == 0 ? -1 : 0); });

    auto* raster = new QGridLayout;
    raster->setColumnStretch(3, 1);
    raster->addWidget(label(Text::Arbeiterinnen), 0, 1);
    raster->addWidget(label(Text::Drohnen), 0, 2);
    struct Zeile {
        Text wort;
        QStringView arbeit;
        QStringView drohn;
    };
    const Zeile zeilen[] = {{Text::Cubitalindex, u"CI Arbeit", u"CI Drohn"},
                            {Text::Hantelindex, u"HI Arbeit", u"HI Drohn"},
                            {Text::Discoidalverschiebung, u"DV Arbeit", u"DV Drohn"}};
    constexpr int JeGeschlecht = 3;
    for (const int spalte : {0, 1}) {
        for (int i = 0; i < JeGeschlecht; ++i) {
            const Zeile& zeile = zeilen[i];
            if (spalte == 0) {
                raster->addWidget(label(zeile.wort), i + 1, 0);
            }
            raster->addWidget(feld(spalte == 0 ? zeile.arbeit : zeile.drohn, Linien,
                                   u"txt_Linien_%1"_s.arg(spalte * JeGeschlecht + i), zeile.wort),
                              i + 1, spalte + 1);
        }
        auto* richtung = new QComboBox;
        richtung->setObjectName(u"cbo_DV_%1"_s.arg(spalte));
        richtung->addItems({QString(), QString()});
        richtung->installEventFilter(this);
        connect(richtung, &QComboBox::activated, this,
                [this](int position) { cbo_DV_Click(position); });
        raster->addWidget(richtung, JeGeschlecht + 1, spalte + 1);
        cbo_DV_.at(static_cast<std::size_t>(spalte)) = richtung;
        beschriftungen_.emplace_back([this, richtung] {
            richtung->setItemText(0, texte_(Text::Über));
            richtung->setItemText(1, texte_(Text::Unter));
            richtung->setToolTip(texte_(Meldung::RichtungDV));
            richtung->setAccessibleName(texte_(Meldung::RichtungDV));
        });
    }
    raster->addWidget(label(Text::DV), JeGeschlecht + 1, 0);
    layout->addLayout(raster);
    layout->addStretch();
    return gruppe;
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
        f.eingabe->setAccessibleDescription(f.eingabe->toolTip());
    }
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
    }
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
    bool kopiert = true;
    const auto eine = [&](int nummer) {
        const Rassestandard& s = standard(nummer);
        SpeichernKarte5Arbeiterinnen(s, nummer, ini);
        SpeichernKarte5Drohnen(s, nummer, ini);
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
    }
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
}

/// Brings the text of a field into its usual form and takes it over. A decimal beyond what can be
/// stored, or a percentage that can be no share, gives way to the value before. Whoever defines a
/// boundary line here wants it to apply.
void Rassenseite::verlasse(const Feld& f) {
    const Standardzeile& zeile = *f.zeile;
    const bool text = istText(zeile.art);
    const QString getippt = f.eingabe->text();
    const QString vorher = anzeigetext(zeile, gezeigt(), format_);
    if (!text && getippt == vorher) {
        return;
    }
    if (zeile.art != Werteart::Prozent || istAnteil(getippt)) {
        übernehme(zeile, gezeigt(), text ? normalisiert(zeile.art, getippt, format_) : getippt);
    }
    const QString nachher = anzeigetext(zeile, gezeigt(), format_);
    f.eingabe->setText(nachher);
    if (zeile.gruppe == Linien && nachher != vorher) {
        setze(Linien, u"Korrelation", 0);
        opt_Korrelation_[1]->setChecked(true);
    }
}

/// The same for what was typed into fields that have not been left yet.
void Rassenseite::vervollständige() {
    for (const Feld& f : felder_) {
        if (f.eingabe->isModified()) {
            verlasse(f);
        }
    }
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
