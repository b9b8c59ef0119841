#pragma once

#include "lang/texte.h"
#include "platform/zahlen.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/zeileneingabe.h"

#include <QAbstractTableModel>
#include <QCache>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// The rows of a record source for a grid. The first page comes with its values at once; then only
/// the places of all rows are known, and values are read by the page when they are looked at, so
/// that the size of the file does not matter.
class Ergebnismodell : public QAbstractTableModel {
public:
    using Zeile = Ergebnistabelle::Zeile;

    static constexpr int Seite = 64; ///< rows a page

    explicit Ergebnismodell(const Texte& texte, QObject* parent = nullptr);

    /// What happens just before a changed row is written; it may change the row further.
    void vorÄnderung(std::function<void(Zeile&)> handlung) { vorÄnderung_ = std::move(handlung); }
    /// Takes the message of a failure or a refused input, with the error number: that of a
    /// Datenbankgrund, or Einwand. Called from within painting and editing, so it must not wait for
    /// the user.
    using Fehlerempfänger = std::function<void(int DataErr, const QString& text)>;
    static constexpr int Einwand = -1;
    /// Another program has changed the row; the text says what stands in it now.
    static constexpr int Fremdgeändert = -2;
    void beiFehler(Fehlerempfänger empfänger) { beiFehler_ = std::move(empfänger); }

    /// What a change of a word asks for before it is written, and does in place of it.
    enum class Wortwechsel { Schreiben, Erledigt, Ablehnen };
    /// Called with the number of an examination whose caste is to change to @p wort. Must not wait
    /// for the user.
    using Wortprüfer = std::function<Wortwechsel(const QString& nummer, const QString& wort)>;
    /// Asked before a date is written.
    void vorDatum(std::function<bool(const QDate& datum)> prüfer) { vorDatum_ = std::move(prüfer); }
    void vorTierwechsel(Wortprüfer prüfer) { vorTierwechsel_ = std::move(prüfer); }

    /// How the columns on demand write numbers.
    void setzeFormat(const Zahlenformat& format) { format_ = format; }

    /// Narrows the rows further once all their places are known. False when the user stopped it.
    using Sieb = std::function<bool(std::vector<qint64>&)>;
    /// Shows the rows of @p wahl that @p sieb leaves. Throws Datenbankfehler; no row is shown then.
    void zeige(const QString& datei, const Zeilenwahl& wahl, const Sieb& sieb = {});

    /// Shows no row.
    void leere();

    /// Whether the number of rows is known.
    [[nodiscard]] bool vollständig() const { return vollständig_; }
    /// Examination number of a row as it is stored; empty when the row has gone.
    [[nodiscard]] QString nummer(int zeile) const;
    /// Place of a row in the file.
    [[nodiscard]] qint64 id(int zeile) const { return ids_.at(static_cast<std::size_t>(zeile)); }
    /// The places of the rows that are known, in their order.
    [[nodiscard]] const std::vector<qint64>& ids() const { return ids_; }
    /// A row as it was read; nothing when it has gone.
    [[nodiscard]] std::optional<Zeile> gezeigte(int zeile) const;
    /// Whether a row is still there and can be read.
    [[nodiscard]] bool istVorhanden(int zeile) const { return this->zeile(zeile) != nullptr; }
    /// Deletes a row from the file. Throws Datenbankfehler; the row stays then.
    void lösche(int zeile);
    /// What takes back the changes made here, the last one at the end.
    [[nodiscard]] std::vector<Rücknahme>& rücknahmen() { return rücknahmen_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// Writes one cell, and the rest of its row as vorÄnderung left it, at once. A text that its
    /// column does not take changes nothing and is told to the receiver of failures.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    /// Rows by their place within the page; nothing where a row has gone meanwhile.
    using Block = std::vector<std::optional<Zeile>>;

    [[nodiscard]] const Zeile* zeile(int nummer) const;
    [[nodiscard]] const Block* block(int nummer) const;
    [[nodiscard]] QString anzeige(const QString& wert, Ergebnisspalte spalte) const;
    /// What the columns on demand say of a row.
    using Zusatz = std::array<QString, AnzahlZusatzspalten>;
    [[nodiscard]] QString zusatz(int zeile, int stelle) const;
    [[nodiscard]] Zusatz zusatzVon(const Ergebnissatz& satz) const;
    [[nodiscard]] QString unterschied(const Zeile& alt, const Zeile& jetzt) const;
    /// What the word about the verdict of a row does not tell.
    [[nodiscard]] QVariant tipp(int nummer) const;
    void vergiss();
    void frische(int zeile);
    void melde(const Datenbankfehler& fehler) const;

    const Texte& texte_;
    std::function<void(Zeile&)> vorÄnderung_;
    Fehlerempfänger beiFehler_;
    Ergebnistabelle tabelle_{QString()};
    Wortprüfer vorTierwechsel_;
    std::function<bool(const QDate&)> vorDatum_;
    Zahlenformat format_;
    Zeilenwahl wahl_;
    std::vector<Rücknahme> rücknahmen_;
    std::vector<qint64> ids_;
    bool vollständig_ = true;
    mutable QCache<int, Block> blöcke_;
    mutable QCache<int, std::vector<Zusatz>> zusätze_; ///< groups of rows
    mutable bool gestört_ =
        false; ///< reading failed: not tried anew with every cell that is painted
};

} // namespace tarvel
