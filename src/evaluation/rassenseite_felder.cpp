#include "evaluation/rassenseite.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

// The controls of the race page and where they stand.

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Arbeit = Standardgruppe::Arbeiterinnen;
constexpr auto Drohn = Standardgruppe::Drohnen;

constexpr int LängsterText = 127; // what the settings file gives back

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

} // namespace

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
    // A field that is being typed into is not blamed yet, but one that is mended is free at once.
    connect(eingabe, &QLineEdit::textEdited, this, [this, gruppe] {
        if (gruppe != Standardgruppe::Grenzlinien &&
            lab_Mangel_.at(gruppe == Drohn ? 1 : 0)->isVisible()) {
            zeigeHinweise();
        }
    });
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
        schalter->setText(texte_(Meldung::MittelPrüfen));
        schalter->setToolTip(texte_(Meldung::TippMittelregel));
        schalter->setAccessibleDescription(schalter->toolTip());
    });
    connect(schalter, &QCheckBox::clicked, this,
            [this, gruppe, schlüssel](bool gesetzt) { setze(gruppe, schlüssel, gesetzt ? 1 : 0); });
    auto* richtung = new QComboBox;
    richtung->setObjectName(u"cbo_CIMittel_%1"_s.arg(index));
    richtung->addItems({QString(), QString()});
    richtung->installEventFilter(this);
    cbo_CIMittel_.at(index) = richtung;
    connect(richtung, &QComboBox::activated, this,
            [this, gruppe](int position) { setze(gruppe, u"CI Mittel Richtung", position); });
    beschriftungen_.emplace_back([this, richtung] {
        richtung->setItemText(0, texte_(Text::MittelwertÜber));
        richtung->setItemText(1, texte_(Text::MittelwertUnter));
        richtung->setToolTip(texte_(Meldung::TippMittelregel));
        richtung->setAccessibleName(texte_(Meldung::NameMittelrichtung));
    });
    auto* zeile = new QWidget;
    auto* layout = new QHBoxLayout(zeile);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(schalter);
    layout->addWidget(richtung);
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

/// What is wrong with the fields of a group, and what in it has no effect.
QWidget* Rassenseite::hinweiszeilen(std::size_t index) {
    auto* zeilen = new QWidget;
    auto* layout = new QVBoxLayout(zeilen);
    layout->setContentsMargins(0, 0, 0, 0);
    lab_Mangel_.at(index) = new QLabel;
    lab_Mangel_.at(index)->setObjectName(u"lab_Mangel_%1"_s.arg(index));
    lab_Hinweis_.at(index) = new QLabel;
    lab_Hinweis_.at(index)->setObjectName(u"lab_Hinweis_%1"_s.arg(index));
    for (QLabel* label : {lab_Mangel_.at(index), lab_Hinweis_.at(index)}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label);
    }
    QFont fett = lab_Mangel_.at(index)->font();
    fett.setBold(true);
    lab_Mangel_.at(index)->setFont(fett);
    return zeilen;
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
    formular->addRow(hinweiszeilen(0));
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
    formular->addRow(hinweiszeilen(1));
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
    connect(optionen, &QButtonGroup::idClicked, this, [this](int id) {
        setze(Standardgruppe::Grenzlinien, u"Korrelation", id == 0 ? -1 : 0);
        zeigeGeltende();
    });

    auto* raster = new QGridLayout;
    // Beside each column of fields there is room for the values in force.
    constexpr int Spaltenbreite = 2;
    raster->setColumnStretch(1 + 2 * Spaltenbreite, 1);
    raster->addWidget(label(Text::Arbeiterinnen), 0, 1, 1, Spaltenbreite);
    raster->addWidget(label(Text::Drohnen), 0, 1 + Spaltenbreite, 1, Spaltenbreite);
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
            const int nummer = spalte * JeGeschlecht + i;
            raster->addWidget(feld(spalte == 0 ? zeile.arbeit : zeile.drohn,
                                   Standardgruppe::Grenzlinien, u"txt_Linien_%1"_s.arg(nummer),
                                   zeile.wort),
                              i + 1, 1 + spalte * Spaltenbreite);
            auto* geltend = new QLabel;
            geltend->setObjectName(u"lab_Geltend_%1"_s.arg(nummer));
            felder_.back().geltend = geltend;
            raster->addWidget(geltend, i + 1, 2 + spalte * Spaltenbreite);
        }
        auto* richtung = new QComboBox;
        richtung->setObjectName(u"cbo_DV_%1"_s.arg(spalte));
        richtung->addItems({QString(), QString()});
        richtung->installEventFilter(this);
        connect(richtung, &QComboBox::activated, this,
                [this](int position) { cbo_DV_Click(position); });
        raster->addWidget(richtung, JeGeschlecht + 1, 1 + spalte * Spaltenbreite, 1, Spaltenbreite,
                          Qt::AlignLeft);
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

} // namespace tarvel
