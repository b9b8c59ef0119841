#pragma once

#include <QFile>
#include <QIODevice>
#include <QImage>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace tarvel {

/// Asked from time to time while a picture is read: how much of how much is done. False to stop.
/// Always called on the thread that asked for the picture.
using Weiter = std::function<bool(qint64 getan, qint64 gesamt)>;

/// The contents of a file for a decoder: read in blocks, never mapped, and at an end when told so.
class Bildquelle final : public QIODevice {
public:
    /// Reads @p datei, which is open and must outlive this, and hands out @p höchstens bytes.
    explicit Bildquelle(QFile& datei, qint64 höchstens);

    /// Makes a decoder fail at the next block. From any thread.
    void halte() { halt_ = true; }
    /// The place that was read last. From any thread.
    [[nodiscard]] qint64 stelle() const { return stelle_; }

    [[nodiscard]] qint64 size() const override { return datei_.size(); }
    bool seek(qint64 stelle) override;

protected:
    qint64 readData(char* ziel, qint64 anzahl) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile& datei_;
    qint64 rest_;
    std::atomic<bool> halt_ = false;
    std::atomic<qint64> stelle_ = 0;
};

/// A decoded picture, or why there is none.
struct Entziffert {
    QImage pixel; ///< Grayscale8, RGB888, BGR888 or RGB32
    QImage übersicht;
    bool abgeschnitten = false;
    bool keinSpeicher = false;
    bool abgebrochen = false;
    QString grund; ///< the decoder's words
};

/// Decodes all pixels of page @p seite of an open file of the kind @p format, as rasterformat()
/// names it, and reduces them @p übersichtslänge times enough. With @p weiter the work is done by a
/// thread that has nothing but the file, one picture after the other, while this one asks; when it
/// is told to stop, that thread ends at its own next block.
[[nodiscard]] Entziffert entziffere(std::unique_ptr<QFile> datei, const QByteArray& format,
                                    int seite, int übersichtslänge, const Weiter& weiter);

/// Bytes that decoding a pixel to @p format takes, with what becomes of it.
[[nodiscard]] double speicherJeBildpunkt(QImage::Format format);

} // namespace tarvel
