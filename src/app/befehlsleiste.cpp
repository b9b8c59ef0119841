#include "app/befehlsleiste.h"

#include "app/symbol.h"
#include "platform/kuerzel.h"

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <optional>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using enum Menü;
using Lage = const Befehlslage&;

/// Whether a command makes sense, or is checked. The index is that of the item.
using Regel = bool (*)(Lage lage, int index);

/// Place on the tool bar: index of the button, group, and place within the group.
struct Knopf {
    int index;
    int gruppe;
    int platz;
};

/// A command. One that is never asked about is always enabled; one without an answer to "checked"
/// cannot be.
struct Befehl {
    Menü menü;
    int index;
    Menüzeile zeile;
    const char16_t* symbol = nullptr;
    std::optional<Knopf> knopf = {};
    QStringView wort = {};
    Regel erlaubt = nullptr;
    Regel geprüft = nullptr;
    bool trenntDavor = false;
};

// Answers that several commands give.
bool mitBild(Lage l, int) {
    return l.mitBild;
}
bool mitFlügeln(Lage l, int) {
    return l.mitFlügeln;
}
bool mitFunden(Lage l, int) {
    return l.amMessplatz && l.mitBild && l.mitFunden;
}
bool inTextfeld(Lage l, int) {
    return l.inTextfeld;
}
bool zoom(Lage l, int index) {
    return l.Zoomfaktor == index;
}
bool messart(Lage l, int index) {
    return l.messart == index;
}
bool sprache(Lage l, int index) {
    return l.sprache == index;
}
/// The view of a command word: checked while it is shown.
template <const QStringView& Wort>
bool gezeigt(Lage l, int) {
    return l.ansicht == Wort;
}

/// Menus with their captions; a menu within another names it.
struct Menükopf {
    Menü menü;
    QStringView name;
    Text text;
    std::optional<Menü> in = {};
};

constexpr Menükopf Menüköpfe[] = {
    {Datei, u"men_Datei", Text::MenüDatei},
    {Bearbeiten, u"men_Bearbeiten", Text::MenüBearbeiten},
    {Ansicht, u"men_Ansicht", Text::MenüAnsicht},
    {Zoom, u"men_Zoom", Text::MenüZoomBeiMessen, Ansicht},
    {Extras, u"men_Extras", Text::MenüExtras},
    {Betriebsart, u"men_Betriebsart", Text::Betriebsart, Extras},
    {Menü::Sprache, u"men_Sprache", Text::MenüSprache, Extras},
    {Hilfe, u"men_Hilfe", Text::MenüHilfe},
};

/// All commands in the order of the menus. A submenu stands before the first item after its own.
const std::vector<Befehl>& befehle() {
    const auto strg = [](int taste) { return QKeySequence(Qt::CTRL | Qt::Key(taste)); };
    const auto strgUmschalt = [](int taste) {
        return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key(taste));
    };
    static const std::vector<Befehl> alle{
        // clang-format off
        {Datei, 0, {Text::MenüNeu, Meldung::TippNeueUntersuchung, {QKeySequence::New}}, u"neu", Knopf{9, 1, 1}},
        {Datei, DateiNächstesVolk, {Meldung::MenüNächstesVolk, Meldung::TippNächstesVolk, {strgUmschalt(Qt::Key_N)}}},
        {Datei, 1, {Text::MenüÖffnen, Meldung::TippÖffnen, {QKeySequence::Open}}, u"oeffnen", Knopf{0, 1, 2}, befehl::Öffnen},
        {Datei, 2, {Text::MenüSpeichern, Meldung::TippSpeichern, {QKeySequence::Save}}, {}, {}, {},
         [](Lage l, int) { return l.zuSpeichern; }},
        {Datei, 3, {Text::Importieren, Meldung::TippImportieren, {strg(Qt::Key_I)}}},
        {Datei, DateiOrdnerImportieren, {Meldung::ImportOrdner, Meldung::TippImportOrdner, {strgUmschalt(Qt::Key_I)}}},
        {Datei, DateiExportieren, {Meldung::Exportieren, Meldung::TippExportieren, {strg(Qt::Key_E)}}, {}, {}, {}, mitFlügeln},
        {Datei, DateiZuchtübersicht, {Meldung::Zuchtübersicht, Meldung::TippZuchtübersicht, {strg(Qt::Key_U)}}},
        {Datei, 5, {Text::MenüBildLaden, Meldung::TippBildLaden, {strg(Qt::Key_L)}}, u"bild-laden", Knopf{14, 2, 1}, befehl::BildLaden, {}, {}, true},
        {Datei, 6, {Text::MenüGrafikprogramm, Meldung::TippGrafik, {strg(Qt::Key_G)}}, u"grafik", Knopf{6, 2, 2}, befehl::Grafik, mitBild},
        {Datei, 8, {Text::MenüProtokollDrucken, Meldung::TippDrucken, {QKeySequence::Print}}, u"drucken", Knopf{10, 4, 1}, {}, {}, {}, true},
        {Datei, 9, {Meldung::KnopfVorschau1, Meldung::TippVorschau1, {Qt::Key_F11}}, u"vorschau-1", Knopf{16, 4, 2}, befehl::Vorschau1},
        {Datei, 10, {Meldung::KnopfVorschau2, Meldung::TippVorschau2, {Qt::Key_F12}}, u"vorschau-2", Knopf{17, 4, 3}, befehl::Vorschau2,
         [](Lage l, int) { return l.zweiseitig; }},
        {Datei, 14, {Text::MenüBeenden, Meldung::TippBeenden, {QKeySequence::Quit}}, u"beenden", {}, {}, {}, {}, true},

        {Bearbeiten, BearbeitenRückgängig, {Meldung::Rückgängig, Meldung::TippRückgängig, {QKeySequence::Undo}}, u"rueckgaengig", {}, {},
         [](Lage l, int) { return l.rückgängig; }},
        {Bearbeiten, BearbeitenWiederherstellen, {Meldung::Wiederherstellen, Meldung::TippWiederherstellen, {strgUmschalt(Qt::Key_Z), strg(Qt::Key_Y)}}, {}, {}, {},
         [](Lage l, int) { return l.wiederherstellbar; }},
        {Bearbeiten, 2, {Text::MesspunkteLöschen, Meldung::TippNeuerFlügel, {strg(Qt::Key_Backspace)}}, u"neuer-fluegel", Knopf{3, 2, 3}, {},
         [](Lage l, int) { return l.amMessplatz && l.mitBild; }, {}, true},
        {Bearbeiten, 1, {Text::MessungWiederholen, Meldung::TippWiederholen, {strg(Qt::Key_R)}}, u"wiederholen", {}, {}, mitFlügeln},
        {Bearbeiten, BearbeitenAuslassen, {Meldung::MenüAuslassen, Meldung::TippAuslassen, {strg(Qt::Key_D)}}, {}, {}, {}, mitFlügeln},
        {Bearbeiten, BearbeitenVorschlagen, {Meldung::MenüPunkteVorschlagen, Meldung::TippPunkteVorschlagen, {Qt::Key_P}}, {}, {}, {},
         [](Lage l, int) { return l.amMessplatz && l.mitBild && l.erkennung; }, {}, true},
        {Bearbeiten, BearbeitenNächsterFraglicher, {Meldung::MenüNächsterFraglicher, Meldung::TippNächsterFraglicher, {Qt::Key_N}}, {}, {}, {},
         [](Lage l, int) { return l.amMessplatz && l.mitBild && !l.inÜbersicht && l.mitFraglichen; }},
        {Bearbeiten, BearbeitenAuflösung, {Meldung::MenüFlügelauflösung, Meldung::TippFlügelauflösung}, {}, {}, {}, mitFlügeln},
        {Bearbeiten, BearbeitenNachmessen, {Meldung::MenüWiederholprobe, Meldung::TippWiederholprobe}, {}, {}, {}, mitFlügeln},
        {Bearbeiten, 5, {Text::MenüAusschneiden, Meldung::TippAusschneiden, {QKeySequence::Cut}}, u"ausschneiden", {}, {}, inTextfeld, {}, true},
        {Bearbeiten, 6, {Text::MenüKopieren, Meldung::TippKopieren, {QKeySequence::Copy}}, u"kopieren", {}, {}, inTextfeld},
        {Bearbeiten, 7, {Text::MenüEinfügen, Meldung::TippEinfügen, {QKeySequence::Paste}}, u"einfuegen", {}, {}, inTextfeld},
        {Bearbeiten, 8, {Text::MenüLöschen, Meldung::TippLöschen}, {}, {}, {}, inTextfeld},
        {Bearbeiten, BearbeitenFlügelLöschen, {Meldung::MenüFlügelLöschen, Meldung::TippFlügelLöschen, {Qt::SHIFT | Qt::Key_Delete}}, {}, {}, {}, mitFlügeln, {}, true},
        {Bearbeiten, 0, {Text::MenüLetzteMessungLöschen, Meldung::TippLetzteLöschen, {strg(Qt::Key_Delete)}}, u"loeschen", {}, {}, mitFlügeln},
        {Bearbeiten, 11, {Text::MenüAlleMessungenLöschen, Meldung::TippAlleLöschen, {strgUmschalt(Qt::Key_Delete)}}, u"loeschen-alle", {}, {}, mitFlügeln},

        {Ansicht, 0, {Text::MenüAlleMessungen, Meldung::TippAlle, {Qt::Key_F2}}, u"alle", Knopf{2, 3, 1}, befehl::Alle, {}, gezeigt<befehl::Alle>},
        {Ansicht, 11, {Text::Tabelle, Meldung::TippTabelle, {Qt::Key_F3}}, u"tabelle", Knopf{15, 3, 2}, befehl::Tabelle, {}, gezeigt<befehl::Tabelle>},
        {Ansicht, 3, {Text::MenüKurven, Meldung::TippKurven, {Qt::Key_F4}}, u"kurven", Knopf{4, 3, 3}, befehl::Kurven, {}, gezeigt<befehl::Kurven>},
        {Ansicht, 4, {Text::MenüKorrelation, Meldung::TippKorrel, {Qt::Key_F5}}, u"korrel", Knopf{11, 3, 4}, befehl::Korrel, {}, gezeigt<befehl::Korrel>},
        {Ansicht, 2, {Text::KörperMerkmale, Meldung::TippMerkmale, {Qt::Key_F6}}, u"merkmal", Knopf{8, 3, 5}, befehl::Merkmal, {}, gezeigt<befehl::Merkmal>},
        {Ansicht, 6, {Text::MenüAlleFlügel, Meldung::TippAlleFlügel, {Qt::Key_F7}}, u"uebersicht", Knopf{5, 2, 4}, {}, mitBild,
         [](Lage l, int) { return l.amMessplatz && l.mitBild && l.inÜbersicht; }, true},
        {Ansicht, 7, {Text::MenüMessen, Meldung::TippMessen, {Qt::Key_F8}}, u"messen", Knopf{7, 2, 5}, befehl::Messen, mitBild,
         [](Lage l, int) { return l.amMessplatz && l.mitBild && !l.inÜbersicht; }},
        {Ansicht, 8, {Meldung::MenüNächstesBild, Meldung::TippNächstesBild, {strg(Qt::Key_PageDown)}}, {}, {}, {}, mitBild},
        {Ansicht, 9, {Meldung::MenüVorigesBild, Meldung::TippVorigesBild, {strg(Qt::Key_PageUp)}}, {}, {}, {}, mitBild},
        {Ansicht, AnsichtNächsterFund, {Meldung::MenüNächsterFund, Meldung::TippNächsterFund, {Qt::Key_W}}, {}, {}, {}, mitFunden, {}, true},
        {Ansicht, AnsichtVorigerFund, {Meldung::MenüVorigerFund, Meldung::TippVorigerFund, {Qt::SHIFT | Qt::Key_W}}, {}, {}, {}, mitFunden},
        {Ansicht, AnsichtFlügelSuchen, {Meldung::MenüFlügelSuchen, Meldung::TippFlügelSuchen, {Qt::SHIFT | Qt::Key_F7}}, {}, {}, {},
         [](Lage l, int) { return l.amMessplatz && l.mitBild && l.erkennung && !l.suchtFlügel; }},
        {Zoom, 1, {u"1 : 1"_s, Meldung::TippZoom}, {}, {}, {}, {}, zoom},
        {Zoom, 2, {u"2 : 1"_s, Meldung::TippZoom}, {}, {}, {}, {}, zoom},
        {Zoom, 3, {u"3 : 1"_s, Meldung::TippZoom}, {}, {}, {}, {}, zoom},
        {Zoom, 4, {u"4 : 1"_s, Meldung::TippZoom}, {}, {}, {}, {}, zoom},
        {Ansicht, AnsichtLeisteLinks, {Meldung::MenüLeisteLinks, Meldung::TippLeisteLinks, {Qt::Key_F9}}, u"seitenleiste-links", {}, {}, {},
         [](Lage l, int) { return l.leisteLinks; }, true},
        {Ansicht, AnsichtLeisteRechts, {Meldung::MenüLeisteRechts, Meldung::TippLeisteRechts, {Qt::Key_F10}}, u"seitenleiste-rechts", {}, {}, {},
         [](Lage l, int) { return l.leisteRechts; }},
        {Ansicht, AnsichtKriterien, {Meldung::Kriterien, Meldung::TippKriterien, {Qt::SHIFT | Qt::Key_F9}}, {}, {}, {}, {},
         [](Lage l, int) { return l.kriterien; }},
        {Ansicht, AnsichtLupeAmZeiger, {Meldung::MenüLupeAmZeiger, Meldung::TippLupeAmZeiger}, {}, {}, {}, {},
         [](Lage l, int) { return l.lupeAmZeiger; }},
        {Ansicht, AnsichtWerkzeugtexte, {Meldung::MenüWerkzeugtexte, Meldung::TippWerkzeugtexte}, {}, {}, {}, {},
         [](Lage l, int) { return l.werkzeugtexte; }},

        {Betriebsart, 0, {Text::NurCubitalindex, Meldung::TippBetriebsart}, {}, {}, {}, {}, messart},
        {Betriebsart, 1, {Text::AlleMessungen, Meldung::TippBetriebsart}, {}, {}, {}, {}, messart},
        {Betriebsart, 2, {Text::KorrelationAuswahl, Meldung::TippBetriebsart}, {}, {}, {}, {}, messart},
        {Menü::Sprache, 0, {sprachname(tarvel::Sprache::Deutsch), Meldung::TippSprache}, {}, {}, {}, {}, sprache},
        {Menü::Sprache, 1, {sprachname(tarvel::Sprache::Englisch), Meldung::TippSprache}, {}, {}, {}, {}, sprache},
        {Menü::Sprache, 2, {sprachname(tarvel::Sprache::Französisch), Meldung::TippSprache}, {}, {}, {}, {}, sprache},
        {Extras, 8, {Text::ProtokollÜbersetzen, Meldung::TippÜbersetzen, {strg(Qt::Key_T)}}, {}, {}, {}, {}, {}, true},
        {Extras, 9, {Text::Optionen, Meldung::TippOptionen, {strg(Qt::Key_Comma)}}, u"optionen"},

        {Hilfe, 0, {Text::MenüInhalt, Meldung::TippInhalt, {Qt::Key_F1}}, u"hilfe", {}, {}, [](Lage l, int) { return l.mitHilfe; }},
        {Hilfe, 4, {Text::Messpunkte, Meldung::TippMesshilfe, {Qt::SHIFT | Qt::Key_F1}}, u"messen"},
        {Hilfe, 1, {Text::MenüInfo, Meldung::TippInfo}, u"info", Knopf{12, 5, 1}},
        // clang-format on
    };
    return alle;
}

/// Menus in which exactly one item is checked.
bool istAuswahl(Menü menü) {
    return menü == Zoom || menü == Betriebsart || menü == Menü::Sprache;
}

} // namespace

Befehlsleiste::Befehlsleiste(QMainWindow& fenster, const Texte& texte, Verteiler& verteiler)
    : fenster_(fenster)
    , texte_(texte)
    , verteiler_(verteiler) {
    baueMenüs();
    baueWerkzeugleiste();
    QObject::connect(&texte_, &Texte::languageChanged, &fenster_, [this] { beschrifteAlle(); });
    beschrifteAlle();
}

void Befehlsleiste::baueMenüs() {
    std::map<Menü, QActionGroup*> gruppen;
    const auto öffne = [&](Menü menü) {
        if (menüs_.contains(menü)) {
            return menüs_.at(menü);
        }
        const Menükopf* kopf = std::find_if(std::begin(Menüköpfe), std::end(Menüköpfe),
                                            [menü](const Menükopf& k) { return k.menü == menü; });
        if (kopf->in && !menüs_.contains(*kopf->in)) {
            menüs_[*kopf->in] = fenster_.menuBar()->addMenu(QString());
        }
        QMenu* neu = kopf->in ? menüs_.at(*kopf->in)->addMenu(QString())
                              : fenster_.menuBar()->addMenu(QString());
        if (istAuswahl(menü)) {
            gruppen[menü] = new QActionGroup(&fenster_);
        }
        return menüs_[menü] = neu;
    };
    for (const Befehl& befehl : befehle()) {
        QMenu* menü = öffne(befehl.menü);
        for (const Menükopf& kopf : Menüköpfe) {
            if (menüs_.contains(kopf.menü)) {
                benenneMenü(*menüs_.at(kopf.menü), kopf.name.toString());
            }
        }
        if (befehl.trenntDavor) {
            menü->addSeparator();
        }
        QAction* neu = fügeHinzu(*menü, befehl.index, befehl.zeile, [this, &befehl](int index) {
            if (!befehl.wort.isEmpty()) {
                verteiler_.führeAus(befehl.wort);
            } else if (const auto stelle = handlungen_.find(befehl.menü);
                       stelle != handlungen_.end()) {
                stelle->second(index);
            }
        });
        if (befehl.symbol != nullptr) {
            neu->setIcon(symbol(QString::fromUtf16(befehl.symbol)));
        }
        neu->setCheckable(befehl.geprüft != nullptr);
        if (gruppen.contains(befehl.menü)) {
            gruppen.at(befehl.menü)->addAction(neu);
        }
        aktionen_.push_back(neu);
    }
    // A number out of range checks no language; the toolkit must not force one to be checked.
    gruppen.at(Menü::Sprache)->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
}

void Befehlsleiste::baueWerkzeugleiste() {
    leiste_ = fenster_.addToolBar(QString());
    leiste_->setObjectName(u"Toolbar"_s);
    leiste_->setMovable(false);
    leiste_->setContextMenuPolicy(Qt::PreventContextMenu);
    std::vector<std::pair<Knopf, QAction*>> knöpfe;
    for (std::size_t i = 0; i < befehle().size(); ++i) {
        if (const auto& knopf = befehle()[i].knopf) {
            knöpfe.emplace_back(*knopf, aktionen_[i]);
        }
    }
    std::sort(knöpfe.begin(), knöpfe.end(), [](const auto& a, const auto& b) {
        return std::pair(a.first.gruppe, a.first.platz) < std::pair(b.first.gruppe, b.first.platz);
    });
    int gruppe = 1;
    for (const auto& [knopf, befehl] : knöpfe) {
        if (knopf.gruppe != std::exchange(gruppe, knopf.gruppe)) {
            leiste_->addSeparator();
        }
        leiste_->addAction(befehl);
        leiste_->widgetForAction(befehl)->setObjectName(u"bef_Toolbar_%1"_s.arg(knopf.index));
    }
}

void Befehlsleiste::beschrifteAlle() {
    for (std::size_t i = 0; i < befehle().size(); ++i) {
        beschrifte(*aktionen_[i], befehle()[i].zeile, texte_);
    }
    aktion(Zoom, 1).setText(u"1 : 1   "_s + texte_(Text::MenüOriginalgröße));
    for (const Menükopf& kopf : Menüköpfe) {
        menüs_.at(kopf.menü)->setTitle(texte_(kopf.text));
    }
    vergibKürzelbuchstaben(fenster_.menuBar()->actions());
    for (const auto& [menü, eintrag] : menüs_) {
        vergibKürzelbuchstaben(eintrag->actions());
    }
}

void Befehlsleiste::beiKlick(Menü menü, Handlung handlung) {
    handlungen_[menü] = std::move(handlung);
}

void Befehlsleiste::zeige(const Befehlslage& lage) {
    for (std::size_t i = 0; i < befehle().size(); ++i) {
        const Befehl& befehl = befehle()[i];
        const bool bekannt = befehl.wort.isEmpty() || lage.verteiler.kennt(befehl.wort);
        aktionen_[i]->setEnabled(bekannt &&
                                 (befehl.erlaubt == nullptr || befehl.erlaubt(lage, befehl.index)));
        if (befehl.geprüft != nullptr) {
            aktionen_[i]->setChecked(befehl.geprüft(lage, befehl.index));
        }
    }
}

void Befehlsleiste::zeigeTextbefehle(bool imTextfeld) {
    for (std::size_t i = 0; i < befehle().size(); ++i) {
        if (befehle()[i].erlaubt == inTextfeld) {
            aktionen_[i]->setEnabled(imTextfeld);
        }
    }
}

void Befehlsleiste::benenne(Menü menü, int index, const QString& text) {
    QAction& gemeinte = aktion(menü, index);
    if (gemeinte.iconText() != text) {
        const QList<QAction*> alle = menüs_.at(menü)->actions();
        for (QAction* aktion : alle) {
            aktion->setText(aktion->text().remove(u'&')); // each letter is given anew
        }
        gemeinte.setText(text);
        gemeinte.setIconText(text);
        vergibKürzelbuchstaben(alle);
    }
}

QAction& Befehlsleiste::aktion(Menü menü, int index) const {
    const auto stelle = std::find_if(befehle().begin(), befehle().end(), [&](const Befehl& befehl) {
        return befehl.menü == menü && befehl.index == index;
    });
    Q_ASSERT(stelle != befehle().end());
    return *aktionen_.at(static_cast<std::size_t>(stelle - befehle().begin()));
}

bool Befehlsleiste::mitWerkzeugtexten() const {
    return leiste_->toolButtonStyle() == Qt::ToolButtonTextUnderIcon;
}

void Befehlsleiste::zeigeWerkzeugtexte(bool zeigen) {
    leiste_->setToolButtonStyle(zeigen ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

} // namespace tarvel
