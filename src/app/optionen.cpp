#include "app/optionen.h"

#include "app/optionsseiten.h"
#include "evaluation/rassen.h"
#include "evaluation/rassenseite.h"
#include "platform/profil.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

Optionen::Optionen(const Umgebung& umgebung, Benutzerspeicher& speicher, int rasse, QWidget* parent,
                   const QString& dokumente)
    : QDialog(parent)
    , umgebung_(umgebung)
    , speicher_(speicher)
    , rasse_(rasse)
    , worte_(umgebung.texte)
    , rassen_(new Rassenseite(umgebung.texte, umgebung.format))
    , karten_(new QTabWidget) {
    setObjectName(u"Optionen"_s);
    karten_->setObjectName(u"tbs_Optionen"_s);
    const std::pair<QWidget*, Text> seiten[] = {
        {seiteAllgemeines({umgebung_, worte_, karte1_2_, eigene_}), Text::Allgemeines},
        {seiteBriefkopf({umgebung_, worte_, karte3_4_, eigene_}), Text::Briefkopf},
        {seiteProtokoll({umgebung_, worte_, karte3_4_, eigene_}), Text::Protokoll},
        {rassen_, Text::Rasse}};
    for (const auto& [seite, wort] : seiten) {
        const int nummer = karten_->addTab(seite, QString());
        worte_.nimm([this, nummer, wort = wort] { karten_->setTabText(nummer, worte_(wort)); });
    }

    auto* knöpfe = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* bef_OK = knöpfe->button(QDialogButtonBox::Ok);
    bef_OK->setObjectName(u"bef_OK"_s);
    worte_.knopf(Meldung::KnopfOK, bef_OK);
    QPushButton* bef_Abbrechen = knöpfe->button(QDialogButtonBox::Cancel);
    bef_Abbrechen->setObjectName(u"bef_Abbrechen"_s);
    worte_.knopf(Text::Abbrechen, bef_Abbrechen);
    connect(bef_OK, &QPushButton::clicked, this, [this] { bef_OK_Click(); });
    connect(bef_Abbrechen, &QPushButton::clicked, this, [this] { bef_Abbrechen_Click(); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(karten_);
    layout->addWidget(knöpfe);

    auto* vierteRasse = findChild<QLineEdit*>(u"txt_Rasse"_s);
    connect(vierteRasse, &QLineEdit::textChanged, this, [this](const QString& name) {
        QStringList namen = rassenliste(umgebung_.einstellungen);
        namen.last() = name;
        rassen_->setzeRassen(namen);
    });
    const QString ordner = umgebung_.einstellungen.text(Einstellung::Arbeitsverzeichnis);
    rassen_->setzeUmgebung({.dialoge = &umgebung_.dialoge,
                            .heute = [this] { return umgebung_.uhr.now().date(); },
                            .ordner = ordner.isEmpty() ? dokumente : ordner});
    rassen_->setzeQuelle(&umgebung_.einstellungen);
    rassen_->setzeRassen(rassenliste(umgebung_.einstellungen));
    connect(&umgebung_.texte, &Texte::languageChanged, this, [this] { beschrifte(); });
    Form_Load();
    beschrifte();
}

Optionen::~Optionen() {
    delete karten_; // a field that loses the focus still needs the words
}

void Optionen::Form_Load() {
    LadenKarte1_2();
    LadenKarte3_4();
    eigene_.lade(umgebung_.einstellungen);
    rassen_->verwirf(umgebung_.einstellungen, rasse_);
}

void Optionen::beschrifte() {
    setWindowTitle(worte_(Text::Optionen));
    worte_.wendeAn();
}

void Optionen::LadenKarte1_2() {
    karte1_2_.lade(umgebung_.einstellungen);
}

void Optionen::SpeichernKarte1_2(Profil& ini) const {
    karte1_2_.speichere(ini);
}

void Optionen::LadenKarte3_4() {
    karte3_4_.lade(umgebung_.einstellungen);
}

void Optionen::SpeichernKarte3_4(Profil& ini) const {
    karte3_4_.speichere(ini);
}

bool Optionen::OKStart() {
    if (QLineEdit* feld = rassen_->mangelhaftesFeld()) {
        karten_->setCurrentWidget(rassen_);
        feld->setFocus();
        feld->selectAll();
        return false;
    }
    Profil ini(umgebung_.einstellungen.IniPfad());
    SpeichernKarte1_2(ini);
    SpeichernKarte3_4(ini);
    const bool kopiert = rassen_->speichere(ini, speicher_, rasse_);
    eigene_.speichernGeänderte(ini, umgebung_.einstellungen);
    if (!ini.sichere()) {
        rassen_->nichtGespeichert(umgebung_.einstellungen, speicher_, rasse_);
        umgebung_.dialoge.meldung(
            worte_(Text::Optionen),
            worte_(Meldung::OptionenNichtGeschrieben).arg(umgebung_.einstellungen.IniPfad()),
            Meldungsart::Ausruf);
        return false;
    }
    karte1_2_.gespeichert();
    karte3_4_.gespeichert();
    rassen_->gespeichert();
    if (!kopiert) {
        umgebung_.dialoge.meldung(worte_(Text::Optionen), worte_(Meldung::GrenzlinienNichtKopiert),
                                  Meldungsart::Ausruf);
    }
    return true;
}

void Optionen::bef_OK_Click() {
    if (OKStart()) {
        accept();
    }
}

void Optionen::bef_Abbrechen_Click() {
    reject();
}

void Optionen::reject() {
    Form_Load();
    QDialog::reject();
}

} // namespace tarvel
