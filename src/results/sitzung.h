#pragma once

#include "results/untersuchung.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <optional>

namespace tarvel {

/// All that is open in the main window and would be gone after a crash.
struct Sitzungsstand {
    QString DatenbankPfad;      ///< the results file in use
    QString gespeicherteNummer; ///< number it lies under in that file; empty for a new one
    Kolonieangaben angaben;
    Messreihe reihe;
    Merkmale merkmale;
    Untersuchungszusatz zusatz = {};
    QDate datum; ///< that it is stored with; invalid for one that was never stored
    bool angabenGeändert = false;
    bool messungenGeändert = false;

    Flügelmessung flügel; ///< the wing being measured, with its picture
    /// Wing of the series that is measured again, 1 to 200; 0 while a new one is.
    qint16 wiederholt = 0;
    QString ansicht; ///< command word of the view

    /// True when there is anything that only this session knows.
    [[nodiscard]] bool etwasZuVerlieren() const {
        return angabenGeändert || messungenGeändert || flügel.punkte.begonnen();
    }
};

/// The part of a session that is the examination.
[[nodiscard]] Sitzungsstand sitzungsstand(const Untersuchung& untersuchung);
/// Puts the examination of a session in place of @p untersuchung. It counts as changed where it
/// was.
void stelleHer(Untersuchung& untersuchung, const Sitzungsstand& stand);

/// Keeps the session in a small file, so that the next start can go on where a crash, a power cut
/// or a kill ended this one.
///
/// A change is added at the end of the file, as a block with a checksum, and reaches the operating
/// system before merke() returns, so the end of the program loses nothing. The drive follows some
/// milliseconds later on a thread of its own, because waiting for it would be felt at every click.
/// When the drive refuses it, the next change makes the file anew. Nothing that stands in the file
/// is overwritten: a cut leaves the former state whole. Nobody but the person may read it.
class Sitzung {
public:
    /// @p pfad full path of the file; it need not exist.
    explicit Sitzung(QString pfad);

    /// The session that the file keeps; nullopt when there is none. To be called before merke().
    /// A file that is damaged or of another version is put aside, see beiseite(); what can be
    /// trusted of it is returned all the same.
    [[nodiscard]] std::optional<Sitzungsstand> lies();
    /// Where the last lies() put a damaged file; empty when there was none.
    [[nodiscard]] const QString& beiseite() const { return beiseite_; }

    /// Keeps @p stand. Nothing is written when it is kept already; once there is nothing to lose
    /// any more, the file goes. A file of an earlier start stays until then or until lösche().
    /// False when it could not be written; the next call tries again.
    bool merke(const Sitzungsstand& stand);

    /// Removes the file, or empties it where its name has to stay. False when it is still there;
    /// merke() tries again then.
    bool lösche();

private:
    bool legeBeiseite();
    [[nodiscard]] bool schreibeNeu(const QByteArray& block);
    [[nodiscard]] bool hängeAn(const QByteArray& block);
    void bringeAufDieScheibe();

    QString pfad_;
    QString beiseite_;
    bool gelesen_ = false;
    /// Size of the file up to the end of its last whole block; 0 when it has to be made anew.
    qint64 länge_ = 0;
    /// What the file keeps, when this object wrote or read it.
    std::optional<Sitzungsstand> gemerkt_;
    QByteArray gemerkterFlügel_;
    bool offen_ = false; ///< the file belongs to this session, not to an earlier start

    std::atomic<bool> scheibeAngefordert_ = false;
    std::atomic<bool> scheibeVersagt_ = false; ///< the file is to be made anew
    QThreadPool scheibe_;                      ///< the last member: it ends before what it uses
};

} // namespace tarvel
