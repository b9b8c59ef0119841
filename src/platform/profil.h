#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tarvel {

/// A profile file: "[section]" lines and "key=value" lines, in Windows code page 1252 or, with its
/// mark, in UTF-16 as Windows writes it (low byte first). The rules are those of the Windows
/// private-profile functions, the same on every system:
/// - CR, LF and CRLF end a line; ';' begins a comment only as the first character of a line;
/// - names match without regard to case, umlauts included; the first of equal sections wins, and
///   the first of equal keys in it;
/// - blanks around names and values do not count; one pair of equal quotes around a value goes.
/// Writing edits in place: comments, order, spelling and line ends of all other lines stay.
///
/// An object holds the file as it was when the object was made; several changes and one sichere()
/// reach the disk together or not at all. Names and values are bytes of the code page.
class Profil {
public:
    /// The most bytes that a file may have, a hundred times what settings take.
    static constexpr qint64 GrößteDatei = qint64{1} * 1024 * 1024;

    /// Reads @p path. A file that is missing counts as empty. One that cannot be read, is larger
    /// than GrößteDatei, is no ordinary file or is UTF-16 of another kind counts as empty too but
    /// is never replaced: sichere() fails.
    explicit Profil(QString path);

    /// How many files were read so far.
    [[nodiscard]] static int lesungen();

    /// The value without its quotes; empty for "key="; nullopt when section or key is missing. A
    /// character beyond the code page reads as '?', but stays in the file.
    [[nodiscard]] std::optional<QByteArray> wert(QByteArrayView section, QByteArrayView key) const;
    /// The same with all its letters.
    [[nodiscard]] std::optional<QString> text(QByteArrayView section, QByteArrayView key) const;
    /// Names of all sections in the order of the file, repeated ones included, empty ones not.
    [[nodiscard]] QList<QByteArray> sektionen() const;
    /// Names of all keys of the first such section, repeated ones included, empty ones not.
    [[nodiscard]] QList<QByteArray> schlüssel(QByteArrayView section) const;

    /// Sets a value, or removes the key when @p value is missing, or the whole section (but not
    /// its comments) when @p key is missing. @p value ends at its first line end or NUL. Returns
    /// false, and changes nothing, for a name that would not come back as a name: one with a line
    /// end or NUL, a section with ']', a key with '=', with '[' in front or with tabs around; in
    /// UTF-16 one with byte 0x81 too.
    bool setze(QByteArrayView section, std::optional<QByteArrayView> key,
               std::optional<QByteArrayView> value);
    /// Sets a value of any letters. The first that the code page lacks turns the file into UTF-16.
    bool setzeText(QByteArrayView section, QByteArrayView key, const QString& value);
    /// Writes the file if anything changed or it did not exist. A failure or a crash in the middle
    /// leaves the old file whole. Keeps the permissions; writes through a symbolic link to its
    /// target. False when it could not be written.
    [[nodiscard]] bool sichere();

private:
    [[nodiscard]] std::optional<QByteArray> rohwert(QByteArrayView section,
                                                    QByteArrayView key) const;
    [[nodiscard]] QByteArray lesbar(const QByteArray& text) const;
    bool setzeRoh(QByteArrayView section, std::optional<QByteArrayView> key,
                  std::optional<QByteArrayView> value);

    QString path_;
    QByteArray inhalt_; ///< of UTF-16, what the code page lacks is escaped
    bool utf16_ = false;
    bool unlesbar_ = false;
    bool ungesichert_ = false;
};

/// @p wert as it must stand in the file to be read back unchanged: in quotes where the reading
/// would take off blanks or quotes around it.
[[nodiscard]] QString alsProfilwert(const QString& wert);

// The next three look whether the file changed since it was last read; only then they read it
// again.

/// One value from the profile file @p path, cut to @p size - 1 bytes; when section or key is
/// missing, @p vorgabe without its trailing blanks, cut the same way. Without @p key the names of
/// the section's keys, without @p section the names of all sections, each followed by a NUL, cut to
/// @p size - 2 bytes. The length of the result is the return value of the function on Windows.
[[nodiscard]] QByteArray GetPrivateProfileStringA(std::optional<QByteArrayView> section,
                                                  std::optional<QByteArrayView> key,
                                                  std::optional<QByteArrayView> vorgabe, int size,
                                                  const QString& path);

/// One value with all its letters, cut to @p size - 1 of them; empty when section or key is
/// missing.
[[nodiscard]] QString profiltext(QByteArrayView section, QByteArrayView key, int size,
                                 const QString& path);

/// The leading whole decimal number of a value, 0 when it begins with none ("False", "abc", "").
/// @p vorgabe only when section or key is missing. Numbers beyond 32 bits wrap around.
[[nodiscard]] int GetPrivateProfileIntA(QByteArrayView section, QByteArrayView key, int vorgabe,
                                        const QString& path);

/// Profil::setze and Profil::sichern in one step. False when nothing could be written.
bool WritePrivateProfileStringA(QByteArrayView section, std::optional<QByteArrayView> key,
                                std::optional<QByteArrayView> value, const QString& path);

} // namespace tarvel
