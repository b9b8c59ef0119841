#pragma once

#include "collection/kolonieauswahl.h"
#include "evaluation/achsen.h"
#include "evaluation/diagramm.h"
#include "evaluation/zeichenflaeche.h"

#include <QPainter>
#include <QRectF>
#include <QStringList>

#include <vector>

namespace tarvel {

/// What the views of a collection write with.
struct Übersichtsworte {
    const Texte& texte;
    Zahlenformat format;
};

/// "CI", "HI", "DV" as the language has them, and their full names.
[[nodiscard]] QString kurzname(Größe größe, const Texte& texte);
[[nodiscard]] QString vollerName(Größe größe, const Texte& texte);
/// A value of an index, its standard deviation, a share in percent, as they are written everywhere.
[[nodiscard]] QString werttext(Größe größe, double wert, const Zahlenformat& format);
[[nodiscard]] QString streuungstext(Größe größe, double wert, const Zahlenformat& format);
/// "1200 dpi", or that it is unknown or mixed.
[[nodiscard]] QString dpitext(int dpi, const Texte& texte);
/// "007 · Volk 3": what a colony goes by.
[[nodiscard]] QString kolonietitel(const Koloniewerte& kolonie);
/// The word of the stored verdict.
[[nodiscard]] QString urteilstext(const Koloniewerte& kolonie, const Texte& texte);
/// The boundary lines that all of @p kolonien have in common; empty when they differ.
[[nodiscard]] std::optional<Koloniegrenzen> gemeinsameGrenzen(const Kolonieauswahl& kolonien,
                                                              const Kolonieregeln& regeln);

/// @p text in lines no wider than @p breite; a longer word is shortened.
[[nodiscard]] QStringList umbruch(const QString& text, const QFont& schrift, double breite);

/// A sign of a colony: told apart by its form, not by colour.
inline constexpr int Zeichenzahl = 6;
void maleZeichen(Zeichenfläche& z, QPointF mitte, int art, const QColor& farbe, double radius,
                 bool gefüllt);

/// A sheet with a heading and notes at its foot that say how it is to be read; between them is room
/// for the view.
class Übersichtsblatt {
public:
    static constexpr double Rand = 16;
    static constexpr double Kopfhöhe = 38;
    static constexpr double Fußzeile = 17;

    Übersichtsblatt(const QRectF& rahmen, const Diagrammstil& stil, QString titel,
                    const QStringList& hinweise);

    Diagrammmaß maß;
    QRectF mitte; ///< what heading and notes leave

    void male(Zeichenfläche& z) const;

private:
    QString titel_;
    QStringList zeilen_;
};

/// What the painters of the views have in common: the sheet, its words and its writing.
class Blattmaler {
public:
    /// References outlive it.
    Blattmaler(QPainter& painter, const Übersichtsblatt& blatt, const Übersichtsworte& worte,
               const Diagrammstil& stil);

protected:
    /// A sentence in the middle, in place of a view that there is nothing for.
    void sage(const QString& satz);

    Zeichenfläche z_;
    const Übersichtsblatt& blatt_;
    const Übersichtsworte& worte_;
    const Diagrammstil& stil_;
    QFont klein_;
    QFont fett_; ///< of the small writing
    QFont normal_;
};

/// Entries of a legend with their signs, in rows below each other.
class Zeichenerklärung {
public:
    /// In place of a sign: the dashed line of a boundary.
    static constexpr int Grenzlinie = -1;
    struct Eintrag {
        int zeichen = 0;
        QString text;
    };
    /// @p oben and the width that it may take.
    Zeichenerklärung(std::vector<Eintrag> einträge, const Diagrammstil& stil, double oben,
                     double links, double rechts);

    [[nodiscard]] double unten() const { return unten_; }
    void male(Zeichenfläche& z) const;

private:
    std::vector<Eintrag> einträge_;
    std::vector<QPointF> orte_;
    double unten_;
};

/// One field with two axes. The axes hold the values that are given to them.
struct Wertefeld {
    QRectF fläche;
    Achse x;
    Achse y;

    [[nodiscard]] QPointF ort(double wertX, double wertY) const {
        return {x.ort(wertX), y.ort(wertY)};
    }
};

/// An axis from @p von to @p bis with some air at its ends; values that are the same get room.
[[nodiscard]] Achse luftigeAchse(double von, double bis, double anfang, double ende);

/// Lines of the grid and numbers of an axis.
void maleWaagrechteTeilung(Zeichenfläche& z, const Wertefeld& feld, const Zahlenformat& format,
                           bool mitVorzeichen);
void maleSenkrechteTeilung(Zeichenfläche& z, const Wertefeld& feld, const Zahlenformat& format,
                           bool mitVorzeichen, int höchstens);

} // namespace tarvel
