#pragma once

#include "lang/texte.h"
#include "measure/bildarbeiter.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <variant>

namespace tarvel {

/// Why a picture cannot be measured.
struct Bildfehler {
    enum class Art {
        NichtGefunden,
        KeinRecht,
        Leer,
        Unlesbar,
        Abgeschnitten,
        ZuGross,
        KeinSpeicher,
        Abgebrochen ///< the one who waited for it did not want to
    };
    Art art = Art::Unlesbar;
    /// What the system or the decoder said, or the size of a picture that is too large. A detail
    /// for a message, not a message; may be empty.
    QString grund = {};
    /// Of a picture that is too large: as many pixels of this kind could be read.
    qint64 höchstens = 0;
};

/// What happened to the picture @p pfad and what to do; empty for one that was stopped.
[[nodiscard]] QString text(const Bildfehler& fehler, const QString& pfad, const Texte& texte);

/// One of several pictures of a file.
struct Bildseite {
    int nummer = 1; ///< from 1
    QSize größe;
};

/// All pixels of one picture, decoded once by whoever needs them first; others wait for that. To be
/// used by several threads.
class Pixelladung {
public:
    /// @p pixel those that are there already; else null.
    Pixelladung(QString pfad, QSize größe, QImage pixel);

    /// The pixels, or a null picture with @p fehler set. @p weiter is asked while it lasts, on the
    /// calling thread. Whoever says no while another one decodes only leaves, or stops that as well
    /// when @p fürAlle.
    [[nodiscard]] QImage hole(Bildfehler* fehler, const Weiter& weiter, bool fürAlle = true);
    /// How much of them is there, 0 to 100.
    [[nodiscard]] int prozent() const;

private:
    bool warte(std::unique_lock<std::mutex>& sperre, const Weiter& weiter);

    const QString pfad_;
    const QSize größe_;
    std::mutex riegel_;
    std::condition_variable fertig_;
    QImage pixel_;
    bool lädt_ = false;
    std::optional<Bildfehler> fehler_; ///< of the last attempt
    std::atomic<bool> halt_ = false;
    std::atomic<qint64> getan_ = 0;
    std::atomic<qint64> gesamt_ = 1;
};

/// One wing picture. Opening reads the header and a reduced picture, which is there at once even
/// for a page at 1200 dpi; all pixels are read when they are first asked for.
///
/// Pixels are taken as they are stored: neither an orientation noted in the file nor the
/// resolution in its header counts, so that the points of a wing never move on its picture.
/// Contents decide the format, not the name; a name may end with a page, as Bildort says.
class Bilddatei {
public:
    /// Pictures of more pixels are refused.
    static constexpr qint64 HöchstensBildpunkte = 600'000'000;
    /// So are those that would take more memory, everything counted that reading them needs.
    static constexpr qint64 HöchstensBytes = qint64{2000} * 1024 * 1024;
    /// The reduced picture has at least this many pixels on its long side, as far as there are.
    static constexpr int Übersichtslänge = 1600;

    /// Never throws; a fault that shows without decoding every pixel is reported here. @p weiter is
    /// asked while it lasts.
    [[nodiscard]] static std::variant<Bilddatei, Bildfehler> öffne(const QString& pfad,
                                                                   const Weiter& weiter = {});
    /// Size of a picture that could be opened, from its header alone; nullopt for any other file,
    /// whatever it is.
    [[nodiscard]] static std::optional<QSize> liesGröße(const QString& pfad);
    /// The pictures of a file that holds several, previews left out; empty for any other.
    [[nodiscard]] static QList<Bildseite> seiten(const QString& pfad);

    [[nodiscard]] const QString& pfad() const { return pfad_; }
    /// Size of the whole picture in pixels.
    [[nodiscard]] QSize größe() const { return größe_; }
    /// The whole picture reduced by a whole factor or by eighths, for looking at.
    [[nodiscard]] const QImage& übersicht() const { return übersicht_; }

    /// All pixels, as Grayscale8, RGB888, BGR888 or RGB32; read by the first call, which takes
    /// about half a second for a page at 1200 dpi. Null, with @p fehler set, when they cannot be
    /// had in full; there are never part of them. The picture lives as long as this object.
    [[nodiscard]] const QImage* pixel(Bildfehler* fehler, const Weiter& weiter = {});
    /// What all pixels come from, for another thread that needs them.
    [[nodiscard]] const std::shared_ptr<Pixelladung>& ladung() const { return ladung_; }

private:
    Bilddatei() = default;

    QString pfad_;
    QSize größe_;
    QImage übersicht_;
    QImage pixel_;
    std::shared_ptr<Pixelladung> ladung_; ///< shared by copies
};

} // namespace tarvel
