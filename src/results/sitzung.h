#pragma once

#include "results/untersuchung.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <optional>

namespace tarvel {

class Rohfassung;

/// All that is open in the main window and would be gone after a crash.
struct Sitzungsstand {
    QString DatenbankPfad;      ///< the results file in use
    QString gespeicherteNummer; ///< number it lies under in that file; empty for a new one
    QString gespeicherteMarke;  ///< of its row there, see satzmarke()
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
/// That thread also writes the short file that takes the place of one that has grown; merke() adds
/// what came since and puts it there. When the drive refuses it, the next change makes
/// the file anew. Nothing that stands in the file is overwritten: a cut leaves the former state
/// whole. Nobody but the person may read it.
class Sitzung {
public:
    /// @p pfad full path of the file; it need not exist.
    explicit Sitzung(QString pfad);
    ~Sitzung();
    Sitzung(const Sitzung&) = delete;
    Sitzung& operator=(const Sitzung&) = delete;

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

    /// From this size on the file is made anew, so that it stays quick to read. In bytes, about as
    /// much as measuring and taking over forty wings adds.
    static constexpr qint64 Neuanfang = qint64{2} * 1024 * 1024;

private:
    /// A short file that the thread writes while the long one goes on.
    struct Neufassung {
        std::unique_ptr<Rohfassung> datei;
        qint64 länge = 0;
        bool gelungen = false;
        std::atomic<bool> fertig = false; ///< set last, by the thread
    };

    bool legeBeiseite();
    [[nodiscard]] bool schreibeNeu(const QByteArray& block);
    [[nodiscard]] bool legeAn(const QByteArray& block);
    [[nodiscard]] bool hängeAn(const QByteArray& block);
    void bringeAufDieScheibe();
    void beginneNeufassung(const QByteArray& block);
    void übernimmNeufassung();

    QString pfad_;
    QString beiseite_;
    bool gelesen_ = false;
    /// Size of the file up to the end of its last whole block; 0 when it has to be made anew.
    qint64 länge_ = 0;
    /// What the file keeps, when this object wrote or read it.
    std::optional<Sitzungsstand> gemerkt_;
    std::shared_ptr<Neufassung> neufassung_;
    bool nameNeu_ = false; ///< the drive has yet to hear that neufassung_ took the place
    QByteArray seitdem_;   ///< what was added to the file since neufassung_ began
    bool offen_ = false;   ///< the file belongs to this session, not to an earlier start

    std::atomic<bool> scheibeAngefordert_ = false;
    std::atomic<bool> scheibeVersagt_ = false; ///< the file is to be made anew
    QThreadPool scheibe_;                      ///< the last member: it ends before what it uses
};

} // namespace tarvel
