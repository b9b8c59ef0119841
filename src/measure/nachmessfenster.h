#pragma once

#include "lang/texte.h"
#include "measure/messung.h"
#include "measure/nachmessung.h"

#include <QDialog>
#include <QImage>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class QGridLayout;
class QLabel;
class QStackedLayout;

namespace tarvel {

class Bild;
class Lupenpaar;
struct Zeigerereignis;

/// A wing that is to be measured again, with its part of the scan.
struct Nachmessflügel {
    Flügelmessung erste;
    QImage bild; ///< not zoomed
};

/// Spread of a sample, by CI, HI, DV; empty where there is none.
using Probenstreuung = std::array<std::optional<double>, 3>;

/// Shows wings one after the other without the points that they have, lets them be measured, and
/// says at the end how exactly that was. It has a measuring of its own: whatever happens here, the
/// sample stays as it is.
class Nachmessfenster : public QDialog {
public:
    /// @p flügel at least one.
    Nachmessfenster(const Texte& texte, Zahlenformat format, std::vector<Nachmessflügel> flügel,
                    const Probenstreuung& streuung, QWidget* parent);
    ~Nachmessfenster() override;

    /// What the program proposes for each of the wings, where it finds them; may come at any time.
    void setzeVorschläge(std::vector<std::optional<Indizes>> vorschläge);
    [[nodiscard]] bool mitVorschlägen() const { return vorschläge_.has_value(); }
    /// The wings measured so far.
    [[nodiscard]] const std::vector<Nachmessung>& ergebnis() const { return ergebnis_; }

private:
    void zeigeFlügel();
    void zeigeMarken();
    void zeigeErgebnis();
    void schreibe(QGridLayout& tafel, int zeile, const QString& name, const QString& kürzel,
                  const Probenstreuung& werte) const;
    void drück(const Zeigerereignis& ereignis);
    void beweg(const Zeigerereignis& ereignis);
    [[nodiscard]] bool taste(const QKeyEvent& ereignis);
    /// Takes what an event led to: a finished wing is followed by the next.
    void nimm(const Flügelmessung& flügel, const Messergebnis& ergebnis);
    [[nodiscard]] const Nachmessflügel& aktueller() const { return flügel_[ergebnis_.size()]; }

    const Texte& texte_;
    Zahlenformat format_;
    std::vector<Nachmessflügel> flügel_;
    Probenstreuung streuung_;
    std::vector<Nachmessung> ergebnis_;
    std::optional<std::vector<std::optional<Indizes>>> vorschläge_;
    Messreihe keine_; ///< stays empty
    Messung messung_;
    QStackedLayout* seiten_;
    std::unique_ptr<QWidget> ergebnisseite_;
    QLabel* lab_Flügel_;
    QLabel* lab_Hinweis_;
    Bild* bild_;
    Lupenpaar* lupen_;
    int gezogen_ = 0; ///< number of the point being dragged, 0 for none
};

} // namespace tarvel
