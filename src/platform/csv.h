#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <utility>

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
    /// The same, and begins anew behind it.
    [[nodiscard]] QByteArray nimmHeraus() { return std::exchange(csv_, {}); }

private:
    QByteArray csv_;
    bool zeilenbeginn_ = true;
};

/// What separates the fields of @p text: that of comma, semicolon and tab which its first line has
/// most of.
[[nodiscard]] QChar csvTrenner(QStringView text);

/// Takes a table of text apart, a record at a time. Fields come as they stand: blanks, and line
/// ends between quotes, belong to them.
class CsvLeser {
public:
    /// @p text outlives it.
    CsvLeser(QStringView text, QChar trenner)
        : rest_(text)
        , trenner_(trenner) {}

    /// The next record that is not blank; nullopt after the last one. Of one that has more fields
    /// than a table can have, those are left out.
    [[nodiscard]] std::optional<QStringList> nächster();
    /// Line that it began in, from 1.
    [[nodiscard]] int zeile() const { return zeile_; }
    /// A quote of it is not closed: the rest of the text was taken for its field.
    [[nodiscard]] bool offen() const { return offen_; }

private:
    [[nodiscard]] QString feld();
    [[nodiscard]] bool nimmZeilenende();

    QStringView rest_;
    QChar trenner_;
    int zeile_ = 0;
    int nächste_ = 1;
    bool offen_ = false;
};

} // namespace tarvel
