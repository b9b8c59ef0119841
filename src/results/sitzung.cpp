#include "results/sitzung.h"

#include "platform/dateiausgabe.h"
#include "platform/dateisystem.h"
#include "results/sitzungstext.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// No file of ours; it is not even read.
constexpr qint64 GrößteDatei = qint64{64} * 1024 * 1024;

bool gleicheUntersuchung(const Sitzungsstand& a, const Sitzungsstand& b) {
    return a.angabenGeändert == b.angabenGeändert && a.messungenGeändert == b.messungenGeändert &&
           a.DatenbankPfad == b.DatenbankPfad && a.gespeicherteNummer == b.gespeicherteNummer &&
           a.gespeicherteMarke == b.gespeicherteMarke && a.angaben == b.angaben &&
           a.merkmale == b.merkmale && a.datum == b.datum && a.zusatz == b.zusatz &&
           a.reihe == b.reihe;
}

bool gleicherFlügel(const Sitzungsstand& a, const Sitzungsstand& b) {
    return a.flügel == b.flügel && a.wiederholt == b.wiederholt && a.ansicht == b.ansicht;
}

std::string_view alsText(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// True also for a file that has gone: nothing waits for the drive any more.
bool warteAufScheibe(const QString& pfad, bool auchName) {
    Schreibdatei datei;
    const std::filesystem::path ort = systempfad(pfad);
    return datei.öffne(ort) != 0 || (datei.aufDieScheibe() == 0 && datei.schließe() == 0 &&
                                     (!auchName || namenAufDieScheibe(ort.parent_path()) == 0));
}

bool leere(const QString& pfad) {
    Schreibdatei datei;
    return datei.öffne(systempfad(pfad)) == 0 && datei.kürze(0) == 0 && datei.schließe() == 0;
}

constexpr QFile::Permissions FürAndere = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                         QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

} // namespace

Sitzungsstand sitzungsstand(const Untersuchung& untersuchung) {
    Sitzungsstand stand;
    stand.angaben = untersuchung.angaben();
    stand.reihe = untersuchung.reihe();
    stand.merkmale = untersuchung.merkmale();
    stand.zusatz = untersuchung.zusatz();
    stand.datum = untersuchung.datum();
    stand.angabenGeändert = untersuchung.angabenGeändert();
    stand.messungenGeändert = untersuchung.messungenGeändert();
    return stand;
}

void stelleHer(Untersuchung& untersuchung, const Sitzungsstand& stand) {
    untersuchung.lade(stand.angaben, stand.reihe, stand.merkmale, stand.datum, stand.zusatz);
    untersuchung.alsGeändertMerken(stand.angabenGeändert, stand.messungenGeändert);
}

Sitzung::Sitzung(QString pfad)
    : pfad_(std::move(pfad)) {
    scheibe_.setMaxThreadCount(1);
}

Sitzung::~Sitzung() = default;

std::optional<Sitzungsstand> Sitzung::lies() {
    gelesen_ = true;
    gemerkt_.reset();
    länge_ = 0;
    beiseite_.clear();
    const QFileInfo info(pfad_);
    if (!info.isFile()) {
        return std::nullopt;
    }
    if ((info.permissions() & FürAndere) != 0) { // an earlier version's
        QFile::setPermissions(pfad_, info.permissions() & ~FürAndere);
    }
    QFile datei(pfad_);
    Sitzungslesung lesung;
    if (info.size() <= GrößteDatei && datei.open(QIODevice::ReadOnly)) {
        lesung = sitzungAus(datei.readAll());
    }
    // What a failing drive kept back must not be written over.
    lesung.beschädigt = lesung.beschädigt || !datei.isOpen() || datei.error() != QFile::NoError;
    datei.close();
    gemerkt_ = lesung.stand;
    if (!lesung.beschädigt) {
        länge_ = lesung.ende;
    } else if (legeBeiseite() && lesung.stand) {
        // What could be trusted is there for the start after this one too.
        (void)schreibeNeu(sitzungsblock(untersuchungszeilen(*gemerkt_) + flügelzeilen(*gemerkt_)));
    }
    return lesung.stand;
}

bool Sitzung::legeBeiseite() {
    QString ziel;
    for (int zähler = 1; ziel.isEmpty() || QFileInfo::exists(ziel); ++zähler) {
        ziel = pfad_ + u".defekt"_s + QString::number(zähler);
    }
    if (!QFile::rename(pfad_, ziel)) {
        return false;
    }
    beiseite_ = ziel;
    return true;
}

bool Sitzung::merke(const Sitzungsstand& stand) {
    if (!gelesen_) {
        (void)lies();
    }
    if (!stand.etwasZuVerlieren()) {
        return !offen_ || lösche();
    }
    offen_ = true;
    if (scheibeVersagt_.exchange(false)) {
        länge_ = 0; // what the drive did not take is not to be built on
    }
    const bool untersuchungBleibt = gemerkt_ && gleicheUntersuchung(*gemerkt_, stand);
    if (untersuchungBleibt && länge_ > 0 && gleicherFlügel(*gemerkt_, stand)) {
        return true;
    }
    übernimmNeufassung();
    const bool anhängen = länge_ > 0 && QFileInfo(pfad_).size() >= länge_;
    QByteArray zeilen;
    if (!anhängen || !untersuchungBleibt) {
        zeilen = untersuchungszeilen(stand);
    }
    const QByteArray block = sitzungsblock(zeilen + flügelzeilen(stand));
    if (!(anhängen ? hängeAn(block) : legeAn(block) || schreibeNeu(block))) {
        return false; // the file keeps what it kept
    }
    gemerkt_ = stand;
    if (länge_ >= Neuanfang && !neufassung_) {
        beginneNeufassung(sitzungsblock(untersuchungszeilen(stand) + flügelzeilen(stand)));
    }
    return true;
}

void Sitzung::beginneNeufassung(const QByteArray& block) {
    neufassung_ = std::make_shared<Neufassung>();
    seitdem_.clear();
    scheibe_.start([neu = neufassung_, pfad = pfad_, block] {
        neu->datei = std::make_unique<Rohfassung>(pfad, Dateirecht::NurEigner);
        neu->länge = block.size();
        neu->gelungen =
            neu->datei->angelegt() && neu->datei->schreibe(block) && neu->datei->schließeAb();
        neu->fertig = true;
    });
}

/// Puts the short file, with what came since, in the place of the long one, unless the drive is
/// busy with that. When it does not work out the next change begins another.
void Sitzung::übernimmNeufassung() {
    if (!neufassung_ || !neufassung_->fertig || scheibe_.activeThreadCount() > 0) {
        return;
    }
    const std::shared_ptr<Neufassung> neu = std::exchange(neufassung_, nullptr);
    Schreibdatei datei;
    if (neu->gelungen && datei.öffne(systempfad(neu->datei->pfad())) == 0 &&
        datei.schreibeAnsEnde(alsText(seitdem_)) == 0 && datei.schließe() == 0 &&
        neu->datei->nimmPlatz()) {
        länge_ = neu->länge + seitdem_.size();
        nameNeu_ = true;
    }
}

/// Makes the file where there is none. What is not there needs no care, so the drive may follow.
bool Sitzung::legeAn(const QByteArray& block) {
    Schreibdatei datei;
    if (datei.legeAn(systempfad(pfad_), true) != 0) {
        return false;
    }
    if (datei.schreibe(alsText(block)) != 0 || datei.schließe() != 0) {
        QFile::remove(pfad_);
        return false;
    }
    länge_ = block.size();
    nameNeu_ = true;
    neufassung_.reset();
    bringeAufDieScheibe();
    return true;
}

bool Sitzung::schreibeNeu(const QByteArray& block) {
    scheibe_.waitForDone(); // where an open file cannot be replaced
    if (schreibeDatei(pfad_, block, Dateirecht::NurEigner)) {
        return false;
    }
    länge_ = block.size();
    neufassung_.reset();
    return true;
}

bool Sitzung::hängeAn(const QByteArray& block) {
    Schreibdatei datei;
    if (datei.öffne(systempfad(pfad_)) != 0) {
        länge_ = 0; // gone or locked: to be made anew
        return false;
    }
    // What a crash left of a block behind the last whole one.
    const bool amEnde = QFileInfo(pfad_).size() == länge_ || datei.kürze(länge_) == 0;
    if (!amEnde || datei.schreibeAnsEnde(alsText(block)) != 0) {
        (void)datei.kürze(länge_);
        return false;
    }
    if (datei.schließe() != 0) { // nobody knows how much of it is there
        länge_ = 0;
        return false;
    }
    länge_ += block.size();
    if (neufassung_) {
        seitdem_ += block;
    }
    bringeAufDieScheibe();
    return true;
}

void Sitzung::bringeAufDieScheibe() {
    if (scheibeAngefordert_.exchange(true)) {
        return; // the one that is waiting has yet to begin
    }
    scheibe_.start([this, auchName = std::exchange(nameNeu_, false)] {
        scheibeAngefordert_ = false;
        if (!warteAufScheibe(pfad_, auchName)) {
            scheibeVersagt_ = true;
        }
    });
}

bool Sitzung::lösche() {
    scheibe_.waitForDone();
    gelesen_ = true;
    länge_ = 0;
    gemerkt_.reset();
    neufassung_.reset();
    // Where the name has to stay the file holds nothing from now on.
    offen_ = QFileInfo::exists(pfad_) && !QFile::remove(pfad_) && !leere(pfad_);
    return !offen_;
}

} // namespace tarvel
