#pragma once

#include <QByteArray>
#include <QString>

namespace tarvel {

/// The shortest text with a point that gives the same single again; never an exponent.
[[nodiscard]] QByteArray vollerWert(float wert);

/// @name A text in a table for spreadsheets
/// One that begins with =, +, - or @ would be a formula there, as would a part of it behind a
/// separator where the table is taken apart otherwise. An apostrophe in front makes it a text;
/// ausTextzelle takes it away again, so that every text comes back as it was.
/// @{
[[nodiscard]] QString alsTextzelle(const QString& text);
[[nodiscard]] QString ausTextzelle(const QString& zelle);
/// @}

/// A table as comma separated values: UTF-8, a row a line, ended by LF.
class CsvTabelle {
public:
    /// @p kopf names of the columns, separated by commas.
    explicit CsvTabelle(const QByteArray& kopf)
        : csv_(kopf + '\n') {}

    /// A cell that holds no separator and no quotation mark, such as a number.
    void zelle(const QByteArray& inhalt);
    /// A cell without the blanks around its text, in quotes where it needs them; never a formula.
    void text(const QString& text);
    void zeilenende();

    [[nodiscard]] const QByteArray& csv() const { return csv_; }

private:
    QByteArray csv_;
    bool zeilenbeginn_ = true;
};

} // namespace tarvel
