#pragma once

#include "measure/bildmarke.h"
#include "measure/messreihe.h"

#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace tarvel {

/// A picture that wings of a series were measured on.
struct GesuchtesBild {
    QString pfad; ///< as it was stored, of whatever system
    Bildkennung kennung;
    /// Pixels that the picture has at least, since points lie there.
    QSize mindestens = {0, 0};

    bool operator==(const GesuchtesBild&) const = default;
};

/// The pictures of a series, each once, in the order of their wings. Wings without a picture are
/// passed over.
[[nodiscard]] std::vector<GesuchtesBild> gesuchteBilder(const Messreihe& reihe);

/// What a search came to.
struct Bildfund {
    enum class Art {
        Gefunden,
        Fehlt,         ///< no file of the name in any place
        AndererInhalt, ///< only files of the name that are other pictures
    };
    Art art = Art::Fehlt;
    QString pfad; ///< of the picture, or of the first of the other ones; empty when there is none

    bool operator==(const Bildfund&) const = default;
};

/// Finds the pictures of measured wings again after they were moved: where they were, in the folder
/// that the user showed for theirs, beside the results file, beside the last one found, and in
/// every other folder shown, each time also in a folder of the name they lay in. A file counts only
/// when size and content are those that were stored; of wings stored without them, when all points
/// lie on the picture.
class Bildsuche {
public:
    /// @p bildgröße gives the size of a picture file in pixels, an invalid one when it is none.
    explicit Bildsuche(std::function<QSize(const QString& pfad)> bildgröße)
        : bildgröße_(std::move(bildgröße)) {}

    /// The results file in use; an empty path when there is none.
    void setzeErgebnisdatei(const QString& pfad);
    /// The user says that the pictures that lay where @p bild did are in @p ordner now.
    void zeigeOrdner(const GesuchtesBild& bild, const QString& ordner);

    [[nodiscard]] Bildfund suche(const GesuchtesBild& bild);

private:
    [[nodiscard]] QStringList orte(const GesuchtesBild& bild) const;
    [[nodiscard]] bool ist(const QString& pfad, const GesuchtesBild& bild) const;

    std::function<QSize(const QString&)> bildgröße_;
    QString nebenErgebnissen_;
    QString zuletzt_;
    std::map<QString, QString> gezeigt_; ///< stored folder to the one it is now
};

} // namespace tarvel
