#include "app/befehlsleiste.h"

#include "app/symbol.h"
#include "platform/kuerzel.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString feldname(Menue menü) {
    switch (menü) {
    case Menue::Datei:
        return u"men_Datei"_s;
    case Menue::Bearbeiten:
        return u"men_Bearbeiten"_s;
    case Menue::Ansicht:
        return u"men_Ansicht"_s;
    case Menue::Zoom:
        return u"men_Zoom"_s;
    case Menue::Extras:
        return u"men_Extras"_s;
    case Menue::Betriebsart:
        return u"men_Betriebsart"_s;
    case Menue::Sprache:
        return u"men_Sprache"_s;
    case Menue::Hilfe:
        return u"men_Hilfe"_s;
    }
    return {};
}

/// A text may carry its key behind a run of blanks ("Beenden     Alt+F4"); the toolkit wants a tab
/// there to show it in the column of the keys.
QString mitTastenspalte(const QString& text) {
    const qsizetype lücke = text.indexOf(u"   "_s);
    return lücke < 0 ? text : text.left(lücke) + u'\t' + text.mid(lücke).trimmed();
}

/// A caption in two lines of about the same width, so that all of them fit beside each other.
QString umbrochen(const QString& text) {
    qsizetype beste = -1;
    for (qsizetype i = text.indexOf(u' '); i >= 0; i = text.indexOf(u' ', i + 1)) {
        if (beste < 0 || std::max(i, text.size() - i) < std::max(beste, text.size() - beste)) {
            beste = i;
        }
    }
    return beste < 0 ? text : text.left(beste) + u'\n' + text.mid(beste + 1);
}

} // namespace

Befehlsleiste::Befehlsleiste(QMainWindow& fenster, const Texte& texte)
    : fenster_(fenster)
    , texte_(texte) {
    baueMenüs();
    baueWerkzeugleiste();
    QObject::connect(&texte_, &Texte::languageChanged, &fenster_, [this] { beschrifte(); });
    beschrifte();
}

QMenu* Befehlsleiste::neuesMenü(QMenu* darüber, Menue menü, Beschriftung text) {
    QMenu* neu =
        darüber == nullptr ? fenster_.menuBar()->addMenu(QString()) : darüber->addMenu(QString());
    neu->setObjectName(feldname(menü));
    neu->setToolTipsVisible(true);
    menüs_[menü] = neu;
    titel_[menü] = std::move(text);
    return neu;
}

void Befehlsleiste::füge(Menue menü, int index, Beschriftung text, Meldung erklärung,
                         const QString& symbolname, const QKeySequence& kürzel) {
    QAction* neu = menüs_.at(menü)->addAction(QString());
    neu->setObjectName(u"%1_%2"_s.arg(feldname(menü)).arg(index));
    if (!symbolname.isEmpty()) {
        neu->setIcon(symbol(symbolname));
    }
    neu->setShortcut(kürzel);
    QObject::connect(neu, &QAction::triggered, &fenster_, [this, menü, index] {
        if (const auto stelle = handlungen_.find(menü); stelle != handlungen_.end()) {
            stelle->second(index);
        }
    });
    einträge_.push_back({menü, index, std::move(text), erklärung, neu});
}

void Befehlsleiste::trenne(Menue menü) {
    menüs_.at(menü)->addSeparator();
}

void Befehlsleiste::baueMenüs() {
    using enum Menue;

    neuesMenü(nullptr, Datei, Text::MenüDatei);
    füge(Datei, 0, Text::MenüNeu, Meldung::TippNeueUntersuchung, u"neu"_s, QKeySequence::New);
    füge(Datei, DateiNächstesVolk, Meldung::MenüNächstesVolk, Meldung::TippNächstesVolk, {},
         Qt::CTRL | Qt::SHIFT | Qt::Key_N);
    füge(Datei, 1, Text::MenüÖffnen, Meldung::TippÖffnen, u"oeffnen"_s, QKeySequence::Open);
    füge(Datei, 2, Text::MenüSpeichern, Meldung::TippSpeichern, {}, QKeySequence::Save);
    füge(Datei, 3, Text::Importieren, Meldung::TippImportieren, {}, Qt::CTRL | Qt::Key_I);
    füge(Datei, DateiOrdnerImportieren, Meldung::ImportOrdner, Meldung::TippImportOrdner, {},
         Qt::CTRL | Qt::SHIFT | Qt::Key_I);
    füge(Datei, DateiExportieren, Meldung::Exportieren, Meldung::TippExportieren, {},
         Qt::CTRL | Qt::Key_E);
    trenne(Datei);
    füge(Datei, 5, Text::MenüBildLaden, Meldung::TippBildLaden, u"bild-laden"_s,
         Qt::CTRL | Qt::Key_L);
    füge(Datei, 6, Text::MenüGrafikprogramm, Meldung::TippGrafik, u"grafik"_s,
         Qt::CTRL | Qt::Key_G);
    trenne(Datei);
    füge(Datei, 8, Text::MenüProtokollDrucken, Meldung::TippDrucken, u"drucken"_s,
         QKeySequence::Print);
    füge(Datei, 9, Meldung::KnopfVorschau1, Meldung::TippVorschau1, u"vorschau-1"_s, Qt::Key_F11);
    füge(Datei, 10, Meldung::KnopfVorschau2, Meldung::TippVorschau2, u"vorschau-2"_s, Qt::Key_F12);
    trenne(Datei);
    füge(Datei, 14, Text::MenüBeenden, Meldung::TippBeenden, u"beenden"_s, QKeySequence::Quit);

    neuesMenü(nullptr, Bearbeiten, Text::MenüBearbeiten);
    füge(Bearbeiten, 3, Meldung::LetztenPunktZurücknehmen, Meldung::TippRückgängig,
         u"rueckgaengig"_s, QKeySequence::Undo);
    füge(Bearbeiten, 2, Text::MesspunkteLöschen, Meldung::TippNeuerFlügel, u"neuer-fluegel"_s,
         Qt::CTRL | Qt::Key_Backspace);
    füge(Bearbeiten, 1, Text::MessungWiederholen, Meldung::TippWiederholen, u"wiederholen"_s,
         Qt::CTRL | Qt::Key_R);
    trenne(Bearbeiten);
    füge(Bearbeiten, 5, Text::MenüAusschneiden, Meldung::TippAusschneiden, u"ausschneiden"_s,
         QKeySequence::Cut);
    füge(Bearbeiten, 6, Text::MenüKopieren, Meldung::TippKopieren, u"kopieren"_s,
         QKeySequence::Copy);
    füge(Bearbeiten, 7, Text::MenüEinfügen, Meldung::TippEinfügen, u"einfuegen"_s,
         QKeySequence::Paste);
    füge(Bearbeiten, 8, Text::MenüLöschen, Meldung::TippLöschen, {}, {});
    trenne(Bearbeiten);
    füge(Bearbeiten, 0, Text::MenüLetzteMessungLöschen, Meldung::TippLetzteLöschen, u"loeschen"_s,
         Qt::CTRL | Qt::Key_Delete);
    füge(Bearbeiten, 11, Text::MenüAlleMessungenLöschen, Meldung::TippAlleLöschen,
         u"loeschen-alle"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete);

    QMenu* ansicht = neuesMenü(nullptr, Ansicht, Text::MenüAnsicht);
    füge(Ansicht, 0, Text::MenüAlleMessungen, Meldung::TippAlle, u"alle"_s, Qt::Key_F2);
    füge(Ansicht, 11, Text::Tabelle, Meldung::TippTabelle, u"tabelle"_s, Qt::Key_F3);
    füge(Ansicht, 3, Text::MenüKurven, Meldung::TippKurven, u"kurven"_s, Qt::Key_F4);
    füge(Ansicht, 4, Text::MenüKorrelation, Meldung::TippKorrel, u"korrel"_s, Qt::Key_F5);
    füge(Ansicht, 2, Text::KörperMerkmale, Meldung::TippMerkmale, u"merkmal"_s, Qt::Key_F6);
    trenne(Ansicht);
    füge(Ansicht, 6, Text::MenüAlleFlügel, Meldung::TippAlleFlügel, u"uebersicht"_s, Qt::Key_F7);
    füge(Ansicht, 7, Text::MenüMessen, Meldung::TippMessen, u"messen"_s, Qt::Key_F8);
    füge(Ansicht, 8, Meldung::MenüNächstesBild, Meldung::TippNächstesBild, {},
         Qt::CTRL | Qt::Key_PageDown);
    füge(Ansicht, 9, Meldung::MenüVorigesBild, Meldung::TippVorigesBild, {},
         Qt::CTRL | Qt::Key_PageUp);
    neuesMenü(ansicht, Zoom, Text::MenüZoomBeiMessen);
    for (int zoom = 1; zoom <= 4; ++zoom) {
        füge(Zoom, zoom, u"%1 : 1"_s.arg(zoom), Meldung::TippZoom, {}, {});
    }
    trenne(Ansicht);
    füge(Ansicht, AnsichtLeisteLinks, Meldung::MenüLeisteLinks, Meldung::TippLeisteLinks,
         u"seitenleiste-links"_s, Qt::Key_F9);
    füge(Ansicht, AnsichtLeisteRechts, Meldung::MenüLeisteRechts, Meldung::TippLeisteRechts,
         u"seitenleiste-rechts"_s, Qt::Key_F10);
    füge(Ansicht, AnsichtLupeAmZeiger, Meldung::MenüLupeAmZeiger, Meldung::TippLupeAmZeiger, {},
         {});
    füge(Ansicht, AnsichtWerkzeugtexte, Meldung::MenüWerkzeugtexte, Meldung::TippWerkzeugtexte, {},
         {});

    QMenu* extras = neuesMenü(nullptr, Extras, Text::MenüExtras);
    neuesMenü(extras, Betriebsart, Text::Betriebsart);
    füge(Betriebsart, 0, Text::NurCubitalindex, Meldung::TippBetriebsart, {}, {});
    füge(Betriebsart, 1, Text::AlleMessungen, Meldung::TippBetriebsart, {}, {});
    füge(Betriebsart, 2, Text::KorrelationAuswahl, Meldung::TippBetriebsart, {}, {});
    neuesMenü(extras, Menue::Sprache, Text::MenüSprache);
    for (int sprache = 0; sprache < 3; ++sprache) {
        füge(Menue::Sprache, sprache, sprachname(static_cast<tarvel::Sprache>(sprache)),
             Meldung::TippSprache, {}, {});
    }
    trenne(Extras);
    füge(Extras, 8, Text::ProtokollÜbersetzen, Meldung::TippÜbersetzen, {}, Qt::CTRL | Qt::Key_T);
    füge(Extras, 9, Text::Optionen, Meldung::TippOptionen, u"optionen"_s, Qt::CTRL | Qt::Key_Comma);

    neuesMenü(nullptr, Hilfe, Text::MenüHilfe);
    füge(Hilfe, 0, Text::MenüInhalt, Meldung::TippInhalt, u"hilfe"_s, Qt::Key_F1);
    füge(Hilfe, 4, Text::Messpunkte, Meldung::TippMesshilfe, u"messen"_s, Qt::SHIFT | Qt::Key_F1);
    füge(Hilfe, 1, Text::MenüInfo, Meldung::TippInfo, u"info"_s, {});

    for (const Menue menü : {Zoom, Betriebsart, Menue::Sprache}) {
        auto* gruppe = new QActionGroup(&fenster_);
        for (const Eintrag& eintrag : einträge_) {
            if (eintrag.menü == menü) {
                eintrag.aktion->setCheckable(true);
                gruppe->addAction(eintrag.aktion);
            }
        }
        gruppen_[menü] = gruppe;
    }
    // A number out of range checks no language; the toolkit must not force one to be checked.
    gruppen_.at(Menue::Sprache)
        ->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const int index : {0, 2, 3, 4, 6, 7, 11, AnsichtLeisteLinks, AnsichtLeisteRechts,
                            AnsichtLupeAmZeiger, AnsichtWerkzeugtexte}) {
        aktion(Ansicht, index).setCheckable(true);
    }
}

void Befehlsleiste::baueWerkzeugleiste() {
    struct Knopf {
        int index;
        Menue menü;
        int eintrag;
    };
    constexpr int Trenner = -1;
    using enum Menue;
    // In groups: examination, picture, views, print, about.
    const Knopf knöpfe[] = {
        {9, Datei, 0},      {0, Datei, 1},   {Trenner, {}, 0}, {14, Datei, 5},   {6, Datei, 6},
        {3, Bearbeiten, 2}, {5, Ansicht, 6}, {7, Ansicht, 7},  {Trenner, {}, 0}, {2, Ansicht, 0},
        {15, Ansicht, 11},  {4, Ansicht, 3}, {11, Ansicht, 4}, {8, Ansicht, 2},  {Trenner, {}, 0},
        {10, Datei, 8},     {16, Datei, 9},  {17, Datei, 10},  {Trenner, {}, 0}, {12, Hilfe, 1},
    };
    leiste_ = fenster_.addToolBar(QString());
    leiste_->setObjectName(u"Toolbar"_s);
    leiste_->setMovable(false);
    leiste_->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const Knopf& knopf : knöpfe) {
        if (knopf.index == Trenner) {
            leiste_->addSeparator();
            continue;
        }
        QAction& befehl = aktion(knopf.menü, knopf.eintrag);
        leiste_->addAction(&befehl);
        leiste_->widgetForAction(&befehl)->setObjectName(u"bef_Toolbar_%1"_s.arg(knopf.index));
    }
}

QString Befehlsleiste::wortlaut(const Beschriftung& text) const {
    if (const auto* eintrag = std::get_if<Text>(&text)) {
        return texte_(*eintrag);
    }
    if (const auto* meldung = std::get_if<Meldung>(&text)) {
        return texte_(*meldung);
    }
    return std::get<QString>(text);
}

void Befehlsleiste::beschrifte() {
    for (const Eintrag& eintrag : einträge_) {
        eintrag.aktion->setText(mitTastenspalte(wortlaut(eintrag.text)));
    }
    aktion(Menue::Zoom, 1).setText(u"1 : 1   "_s + texte_(Text::MenüOriginalgröße));
    for (const auto& [menü, eintrag] : menüs_) {
        eintrag->setTitle(wortlaut(titel_.at(menü)));
    }
    for (const Eintrag& eintrag : einträge_) {
        const QString kurz = eintrag.aktion->text().section(u'\t', 0, 0);
        eintrag.aktion->setIconText(umbrochen(kurz));
        QString tipp = texte_(eintrag.erklärung);
        if (const QKeySequence kürzel = eintrag.aktion->shortcut(); !kürzel.isEmpty()) {
            tipp += u" ("_s + kürzel.toString(QKeySequence::NativeText) + u')';
        }
        eintrag.aktion->setToolTip(tipp);
        eintrag.aktion->setStatusTip(QString());
    }
    vergibKürzelbuchstaben(fenster_.menuBar()->actions());
    for (const auto& [menü, eintrag] : menüs_) {
        vergibKürzelbuchstaben(eintrag->actions());
    }
}

void Befehlsleiste::beiKlick(Menue menü, Handlung handlung) {
    handlungen_[menü] = std::move(handlung);
}

QAction& Befehlsleiste::aktion(Menue menü, int index) const {
    const auto stelle =
        std::find_if(einträge_.begin(), einträge_.end(), [&](const Eintrag& eintrag) {
            return eintrag.menü == menü && eintrag.index == index;
        });
    Q_ASSERT(stelle != einträge_.end());
    return *stelle->aktion;
}

void Befehlsleiste::zeigeWerkzeugtexte(bool zeigen) {
    leiste_->setToolButtonStyle(zeigen ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

} // namespace tarvel
