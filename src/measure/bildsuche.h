#pragma once

#include "measure/bildmarke.h"
#include "measure/messreihe.h"

#include <QStringList>

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace tarvel {

/// A picture that wings of a series were measured on.
struct GesuchtesBild {
    QString pfad; ///< as it was stored, of whatever system
    Bildkennung kennung;
    /// Pixels that the picture has at least, since points lie there.
    QSize mindestens = {0, 0};
    bool ohneBildhöhe = false; ///< for some of its wings, see Flügelmessung

    bool operator==(const GesuchtesBild&) const = default;
};

/// The pictures of a series, each once, in the order of their wings. Wings without a picture are
/// passed over.
[[nodiscard]] std::vector<GesuchtesBild> gesuchteBilder(const Messreihe& reihe);

/// The one of them that @p flügel was measured on.
[[nodiscard]] GesuchtesBild gesuchtesBild(const Messreihe& reihe, const Flügelmessung& flügel);

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
/// lie on the picture. A path that was stored may come from anybody, so one on another computer is
/// passed over unless the user chose something on that computer.
class Bildsuche {
public:
    /// @p bildgröße gives the size of a picture file in pixels, an invalid one when it is none.
    explicit Bildsuche(std::function<QSize(const QString& pfad)> bildgröße)
        : bildgröße_(std::move(bildgröße)) {}

    /// The results file in use; an empty path when there is none.
    void setzeErgebnisdatei(const QString& pfad);
    /// The user says that the pictures that lay where @p bild did are in @p ordner now.
    void zeigeOrdner(const GesuchtesBild& bild, const QString& ordner);

    /// In pixels; an invalid size when the file is no picture.
    [[nodiscard]] QSize größe(const QString& pfad) const { return bildgröße_(pfad); }

    /// The user chose this file or folder: its computer may be asked.
    void vertraue(const QString& pfad);

    [[nodiscard]] Bildfund suche(const GesuchtesBild& bild);
    /// True when the file @p pfad is that picture, whatever its name.
    [[nodiscard]] bool ist(const QString& pfad, const GesuchtesBild& bild) const;
    /// True when wings measured on @p bild belong onto the picture @p pfad, told by @p kennung,
    /// that the user opened: by content, or, where that is not known, by name once the other is
    /// gone.
    [[nodiscard]] bool gehörtZu(const GesuchtesBild& bild, const QString& pfad,
                                const Bildkennung& kennung) const;

private:
    [[nodiscard]] QStringList orte(const GesuchtesBild& bild) const;
    [[nodiscard]] bool darfFragen(const QString& pfad) const;

    std::function<QSize(const QString&)> bildgröße_;
    std::set<QString> rechner_; ///< other computers that the user chose files of
    QString nebenErgebnissen_;
    QString zuletzt_;
    std::map<QString, QString> gezeigt_; ///< stored folder to the one it is now
};

} // namespace tarvel
