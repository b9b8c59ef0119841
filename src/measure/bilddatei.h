#pragma once

#include <QImage>
#include <QSize>
#include <QString>

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
        KeinSpeicher
    };
    Art art = Art::Unlesbar;
    /// What the system or the decoder said, or the size of a picture that is too large. A detail
    /// for a message, not a message; may be empty.
    QString grund = {};
};

/// One wing picture. Opening reads the header and a reduced picture, which is there at once even
/// for a page at 1200 dpi; all pixels are read when they are first asked for.
///
/// Pixels are taken as they are stored: neither an orientation noted in the file nor the
/// resolution in its header counts. Contents decide the format, not the name.
class Bilddatei {
public:
    /// Pictures of more pixels are refused.
    static constexpr qint64 HöchstensBildpunkte = 400'000'000;
    /// The reduced picture has at least this many pixels on its long side, as far as there are.
    static constexpr int Übersichtslänge = 1600;

    /// Never throws; a fault that shows without decoding every pixel is reported here.
    [[nodiscard]] static std::variant<Bilddatei, Bildfehler> oeffnen(const QString& pfad);

    [[nodiscard]] const QString& pfad() const { return pfad_; }
    /// Size of the whole picture in pixels.
    [[nodiscard]] QSize größe() const { return größe_; }
    /// The whole picture reduced by a whole factor or by eighths, for looking at.
    [[nodiscard]] const QImage& übersicht() const { return übersicht_; }

    /// All pixels, as Grayscale8, RGB888, BGR888 or RGB32; read by the first call, which takes
    /// about half a second for a page at 1200 dpi. Null, with @p fehler set, when they cannot be
    /// had in full; there are never part of them. The picture lives as long as this object or any
    /// copy of it.
    [[nodiscard]] const QImage* pixel(Bildfehler* fehler);

private:
    Bilddatei() = default;

    QString pfad_;
    QSize größe_;
    QImage übersicht_;
    QImage pixel_;
};

} // namespace tarvel
