#pragma once

#include "measure/leseproblem.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

namespace tarvel {

/// The most bytes that a text file with measurements may have. Two hundred wings need a thousandth.
inline constexpr qsizetype GrößteTextdatei = qsizetype{16} * 1024 * 1024;

/// @name Content of a file, but no more than is needed to see that it is too large; nullopt when it
/// cannot be read
/// @{
/// Of a regular file alone: nothing waits for what a pipe may bring.
[[nodiscard]] std::optional<QByteArray> dateiinhalt(const QString& pfad,
                                                    qsizetype höchstens = GrößteTextdatei);
/// Of a pipe or a device too.
[[nodiscard]] std::optional<QByteArray> strominhalt(const QString& pfad,
                                                    qsizetype höchstens = GrößteTextdatei);
/// @}

/// The text of a file.
struct Dateitext {
    QString text;
    /// Name of the character set, when it is none with one byte a character: "UTF-8", "UTF-16LE"…
    QString zeichensatz;
    /// Set when the file has no text to give: empty, binary, too large.
    std::optional<Leseproblem> problem;
};

/// Decodes a file: by its byte order mark, else as UTF-8 when it is nothing but valid UTF-8 (which
/// real Windows-1252 text with umlauts never is), else as Windows-1252. An end-of-file character at
/// the end is dropped.
[[nodiscard]] Dateitext dateitext(QByteArrayView bytes, qsizetype höchstens = GrößteTextdatei);

/// Reads a text line by line; a line ends with CRLF, LF or CR. The text must outlive the reader.
class Zeilenleser {
public:
    explicit Zeilenleser(QStringView text)
        : rest_(text) {}

    /// The next line without its end; nullopt after the last one.
    std::optional<QStringView> nächste();
    /// Number of the line read last; 0 before the first.
    [[nodiscard]] int nummer() const { return nummer_; }

private:
    QStringView rest_;
    int nummer_ = 0;
};

} // namespace tarvel
