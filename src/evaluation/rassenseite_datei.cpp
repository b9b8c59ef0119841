#include "evaluation/rassenseite.h"

#include "evaluation/standarddatei.h"
#include "lang/zielwahl.h"
#include "measure/textdatei.h"
#include "platform/dateiausgabe.h"

#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

// The name of a standard, and how it is given on as a file.

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const QString Endung = u".tstd"_s;

QString dateimuster(const Texte& texte) {
    return texte(Meldung::Standarddateien) + u" (*"_s + Endung + u')';
}

/// A name for a file.
QString dateiname(QString name) {
    for (QChar& zeichen : name) {
        zeichen = zeichen.isLetterOrNumber() || QStringView(u" -_.,").contains(zeichen)
                      ? zeichen
                      : QChar(u'_');
    }
    return name.trimmed() + Endung;
}

} // namespace

QGroupBox* Rassenseite::gruppeStandard() {
    auto* gruppe = new QGroupBox;
    gruppe->setObjectName(u"fra_Standard"_s);
    beschriftungen_.emplace_back([this, gruppe] { gruppe->setTitle(texte_(Meldung::Standard)); });
    txt_Standardname_->setObjectName(u"txt_Standardname"_s);
    txt_Standardversion_->setObjectName(u"txt_Standardversion"_s);
    constexpr int LängsterName = 60;
    constexpr int LängsteVersion = 20;
    txt_Standardname_->setMaxLength(LängsterName);
    txt_Standardversion_->setMaxLength(LängsteVersion);
    for (QLineEdit* eingabe : {txt_Standardname_, txt_Standardversion_}) {
        connect(eingabe, &QLineEdit::editingFinished, this, [this] { benenne(); });
    }
    lab_Standardstand_->setObjectName(u"lab_Standardstand"_s);
    lab_Standardstand_->setTextFormat(Qt::PlainText);
    lab_Standardstand_->setWordWrap(true);
    bef_StandardImport_->setObjectName(u"bef_StandardImport"_s);
    bef_StandardExport_->setObjectName(u"bef_StandardExport"_s);
    auto* knöpfe = new QHBoxLayout;
    knöpfe->addStretch();
    for (QPushButton* knopf : {bef_StandardImport_, bef_StandardExport_}) {
        knopf->setAutoDefault(false);
        knöpfe->addWidget(knopf);
    }
    connect(bef_StandardImport_, &QPushButton::clicked, this,
            [this] { bef_StandardImport_Click(); });
    connect(bef_StandardExport_, &QPushButton::clicked, this,
            [this] { bef_StandardExport_Click(); });
    auto* formular = new QFormLayout(gruppe);
    auto* version = new QLabel;
    beschriftungen_.emplace_back([this, version] {
        version->setText(texte_(Meldung::StandardVersion));
        txt_Standardversion_->setAccessibleName(version->text());
        txt_Standardname_->setAccessibleName(texte_(Text::Name));
    });
    formular->addRow(label(Text::Name), txt_Standardname_);
    formular->addRow(version, txt_Standardversion_);
    formular->addRow(lab_Standardstand_);
    formular->addRow(knöpfe);
    return gruppe;
}

void Rassenseite::benenne() {
    Standardkennung& kennung = gezeigt().kennung;
    const QString name = txt_Standardname_->text().simplified();
    const QString version = txt_Standardversion_->text().simplified();
    if (name == kennung.Name && version == kennung.Version) {
        return;
    }
    kennung.Name = name;
    kennung.Version = version;
    neuBenannt_.at(gezeigte_) = true;
    zeigeKennung();
}

void Rassenseite::besiegle(std::size_t rasse) {
    Standardkennung& kennung = standards_.at(rasse).kennung;
    if (!neuBenannt_.at(rasse)) {
        return;
    }
    const bool mitNamen = !kennung.Name.isEmpty() || !kennung.Version.isEmpty();
    kennung.Datum =
        mitNamen && umgebung_.heute ? umgebung_.heute().toString(Qt::ISODate) : QString();
    kennung.Marke = mitNamen ? standardmarke(standards_.at(rasse)) : QString();
    neuBenannt_.at(rasse) = false;
}

/// What the report will call the standard, and since when it has its name.
void Rassenseite::zeigeKennung() {
    const Rassestandard& standard = gezeigt();
    const Standardkennung& kennung = standard.kennung;
    if (neuBenannt_.at(gezeigte_) || (kennung.Name.isEmpty() && kennung.Version.isEmpty())) {
        lab_Standardstand_->clear();
    } else {
        lab_Standardstand_->setText(
            standardname(standard, tbs_Rasse_->tabText(static_cast<int>(gezeigte_)), texte_) +
            (kennung.Datum.isEmpty() ? QString() : u" ("_s + kennung.Datum + u')'));
    }
}

void Rassenseite::bef_StandardExport_Click() {
    if (umgebung_.dialoge == nullptr) {
        return;
    }
    vervollständige();
    const QString titel = texte_(Meldung::Exportieren);
    if (const auto mangel = standardmangel(gezeigt())) {
        umgebung_.dialoge->meldung(titel, fehlertext(*mangel, texte_), Meldungsart::Ausruf);
        return;
    }
    besiegle(gezeigte_);
    zeigeKennung();
    const Standarddatei datei{tbs_Rasse_->tabText(static_cast<int>(gezeigte_)), gezeigt()};
    const Standardkennung& kennung = datei.standard.kennung;
    const QString name = kennung.Name.isEmpty() ? datei.Rasse : kennung.Name;
    const QString ziel = wähleZiel(
        texte_, *umgebung_.dialoge,
        {.titel = titel,
         .vorschlag = QDir(umgebung_.ordner).filePath(dateiname(name + u' ' + kennung.Version)),
         .muster = dateimuster(texte_),
         .endungen = {Endung}});
    if (ziel.isEmpty()) {
        return;
    }
    if (const auto grund = schreibeDatei(ziel, standardtext(datei).toUtf8())) {
        umgebung_.dialoge->meldung(titel, nichtGeschrieben(texte_, ziel, *grund),
                                   Meldungsart::Ausruf);
    } else {
        umgebung_.dialoge->meldung(
            titel, texte_(Meldung::DateiGeschrieben).arg(QDir::toNativeSeparators(ziel)),
            Meldungsart::Hinweis);
    }
}

void Rassenseite::bef_StandardImport_Click() {
    if (umgebung_.dialoge == nullptr) {
        return;
    }
    vervollständige();
    const QString titel = texte_(Text::Importieren);
    const QString pfad =
        umgebung_.dialoge->wähleDatei(titel, umgebung_.ordner, dateimuster(texte_));
    if (pfad.isEmpty()) {
        return;
    }
    const std::optional<QByteArray> bytes = dateiinhalt(pfad);
    if (!bytes) {
        umgebung_.dialoge->meldung(titel, textUnlesbar(pfad, texte_), Meldungsart::Ausruf);
        return;
    }
    const auto gelesen = liesStandarddatei(*bytes);
    if (const auto* fehler = std::get_if<Standardfehler>(&gelesen)) {
        umgebung_.dialoge->meldung(
            titel, texte_(Meldung::StandardAbgelehnt).arg(fehlertext(*fehler, texte_)),
            Meldungsart::Ausruf);
        return;
    }
    nimm(std::get<Standarddatei>(gelesen));
}

/// After the user has seen what changes.
void Rassenseite::nimm(const Standarddatei& datei) {
    const QString titel = texte_(Text::Importieren);
    const QString rasse = tbs_Rasse_->tabText(static_cast<int>(gezeigte_));
    const Rassestandard& neu = datei.standard;
    QStringList zeilen;
    const QString nameVorher = standardname(gezeigt(), rasse, texte_);
    const QString nameNachher = standardname(neu, datei.Rasse, texte_);
    if (nameVorher != nameNachher || neu.kennung.Datum != gezeigt().kennung.Datum) {
        zeilen << texte_(Meldung::Standard) + u": "_s + nameVorher + u" → "_s + nameNachher;
    }
    for (const Standardzeile* zeile : abweichungen(gezeigt(), neu)) {
        zeilen << abweichungstext(*zeile, gezeigt(), neu, texte_, format_);
    }
    if (zeilen.isEmpty()) {
        umgebung_.dialoge->meldung(titel, texte_(Meldung::StandardGleich), Meldungsart::Hinweis);
        return;
    }
    const bool fremd = datei.Rasse.compare(rasse, Qt::CaseInsensitive) != 0;
    const QString text =
        (fremd ? texte_(Meldung::StandardAndereRasse).arg(datei.Rasse, rasse) + u'\n' : QString()) +
        texte_(Meldung::StandardVorschau).arg(nameNachher, rasse);
    if (umgebung_.dialoge->frage({.titel = titel,
                                  .text = text,
                                  .art = fremd ? Meldungsart::Ausruf : Meldungsart::Frage,
                                  .verwirft = fremd,
                                  .ja = texte_(Text::MerkmalÜbernehmen),
                                  .nein = texte_(Text::Abbrechen),
                                  .zeilen = zeilen}) == Antwort::Ja) {
        gezeigt() = neu;
        neuBenannt_.at(gezeigte_) = false;
        zeige();
    }
}

} // namespace tarvel
