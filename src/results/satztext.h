#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

// How the long texts of a row are cut to pieces and their numbers read; for those who read and
// write such texts.
namespace tarvel::satztext {

inline constexpr int HöchsteAuflösung = 100'000;

/// Calls @p fn with every piece that @p ende closes. False when text is left behind the last one.
template <typename Funktion>
bool jedesStück(QStringView text, QChar ende, Funktion fn) {
    for (qsizetype stelle = text.indexOf(ende); stelle >= 0; stelle = text.indexOf(ende)) {
        fn(text.first(stelle));
        text = text.sliced(stelle + 1);
    }
    return text.trimmed().isEmpty();
}

/// Goes through the items of a record with a version. @p fn returns whether it understood one.
template <typename Funktion>
bool jederEintrag(QStringView satz, QStringView kopf, Funktion fn) {
    if (satz.trimmed().isEmpty()) {
        return true;
    }
    const qsizetype ende = satz.indexOf(u';');
    if (ende < 0 || satz.first(ende).trimmed() != kopf) {
        return false;
    }
    bool verstanden = true;
    const bool abgeschlossen = jedesStück(satz.sliced(ende + 1), u';', [&](QStringView stück) {
        verstanden = fn(stück) && verstanden;
    });
    return verstanden && abgeschlossen;
}

/// The pieces between separators. Stops behind @p höchstens, with one piece more than allowed:
/// a text of nothing but separators must not fill the memory.
[[nodiscard]] std::vector<QStringView> teile(QStringView text, QChar trenner,
                                             std::size_t höchstens);

/// A whole number of digits alone within bounds.
[[nodiscard]] std::optional<int> ganzeZahl(QStringView text, int von, int bis);
[[nodiscard]] std::optional<int> flügelnummer(QStringView text);

/// Percent-encoded. Blank and comma stay as they are: they separate nothing and keep the record
/// readable.
[[nodiscard]] QString kodiert(const QString& text);
[[nodiscard]] QString dekodiert(QStringView text);

} // namespace tarvel::satztext
