#include "results/sitzung.h"

#include "results/sitzungstext.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// From here on the file is made anew, so that it stays quick to read. About as much as measuring
/// and taking over forty wings adds.
constexpr qint64 Neuanfang = qint64{2} * 1024 * 1024;
/// No file of ours; it is not even read.
constexpr qint64 GrößteDatei = qint64{64} * 1024 * 1024;

bool gleicheReihe(const Messreihe& a, const Messreihe& b) {
    if (a.ciZeilen() != b.ciZeilen() || a.hiDvZeilen() != b.hiDvZeilen() ||
        a.messungen() != b.messungen() || a.flügelangaben() != b.flügelangaben()) {
        return false;
    }
    for (int nummer = 0; nummer <= Messreihe::HöchsteFlügelzahl; ++nummer) {
        if (a.chartwerte(nummer) != b.chartwerte(nummer)) {
            return false;
        }
    }
    return true;
}

bool gleicheUntersuchung(const Sitzungsstand& a, const Sitzungsstand& b) {
    return a.angabenGeändert == b.angabenGeändert && a.messungenGeändert == b.messungenGeändert &&
           a.DatenbankPfad == b.DatenbankPfad && a.gespeicherteNummer == b.gespeicherteNummer &&
           a.angaben == b.angaben && a.merkmale == b.merkmale && a.datum == b.datum &&
           a.zusatz == b.zusatz && gleicheReihe(a.reihe, b.reihe);
}

bool gleicherFlügel(const Sitzungsstand& a, const Sitzungsstand& b) {
    return a.flügel == b.flügel && a.wiederholt == b.wiederholt && a.ansicht == b.ansicht;
}

void warteAufScheibe(const QString& pfad) {
    QFile datei(pfad);
    if (datei.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
#ifdef Q_OS_WIN
        (void)_commit(datei.handle());
#else
        (void)fsync(datei.handle());
#endif
    }
}

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

std::optional<Sitzungsstand> Sitzung::lies() {
    gelesen_ = true;
    gemerkt_.reset();
    länge_ = 0;
    beiseite_.clear();
    const QFileInfo info(pfad_);
    if (!info.isFile()) {
        return std::nullopt;
    }
    QFile datei(pfad_);
    Sitzungslesung lesung;
    if (info.size() > GrößteDatei || !datei.open(QIODevice::ReadOnly)) {
        lesung.beschädigt = true;
    } else {
        lesung = sitzungAus(datei.readAll());
    }
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
    const bool untersuchungBleibt = gemerkt_ && gleicheUntersuchung(*gemerkt_, stand);
    if (untersuchungBleibt && länge_ > 0 && gleicherFlügel(*gemerkt_, stand)) {
        return true;
    }
    const bool anhängen = länge_ > 0 && länge_ < Neuanfang && QFileInfo(pfad_).size() >= länge_;
    QByteArray zeilen;
    if (!anhängen || !untersuchungBleibt) {
        zeilen = untersuchungszeilen(stand);
    }
    const QByteArray block = sitzungsblock(zeilen + flügelzeilen(stand));
    if (!(anhängen ? hängeAn(block) : schreibeNeu(block))) {
        return false; // the file keeps what it kept
    }
    gemerkt_ = stand;
    return true;
}

bool Sitzung::schreibeNeu(const QByteArray& block) {
    scheibe_.waitForDone(); // where an open file cannot be replaced
    QSaveFile datei(pfad_);
    datei.setDirectWriteFallback(false);
    // commit() alone does not notice that the drive is full while what was buffered is written.
    if (!datei.open(QIODevice::WriteOnly) || datei.write(block) != block.size() || !datei.flush() ||
        !datei.commit()) {
        return false;
    }
    länge_ = block.size();
    return true;
}

bool Sitzung::hängeAn(const QByteArray& block) {
    QFile datei(pfad_);
    if (!datei.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        länge_ = 0; // gone or locked: to be made anew
        return false;
    }
    // What a crash left of a block behind the last whole one.
    const bool amEnde = datei.size() == länge_ || datei.resize(länge_);
    if (!amEnde || !datei.seek(länge_) || datei.write(block) != block.size()) {
        (void)datei.resize(länge_);
        return false;
    }
    länge_ += block.size();
    bringeAufDieScheibe();
    return true;
}

void Sitzung::bringeAufDieScheibe() {
    if (scheibeAngefordert_.exchange(true)) {
        return; // the one that is waiting has yet to begin
    }
    scheibe_.start([this] {
        scheibeAngefordert_ = false;
        warteAufScheibe(pfad_);
    });
}

bool Sitzung::lösche() {
    scheibe_.waitForDone();
    gelesen_ = true;
    offen_ = false;
    länge_ = 0;
    gemerkt_.reset();
    return !QFileInfo::exists(pfad_) || QFile::remove(pfad_);
}

} // namespace tarvel
