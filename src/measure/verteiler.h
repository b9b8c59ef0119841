#pragma once

#include <QString>

#include <functional>
#include <map>
#include <vector>

namespace tarvel {

/// The command words that menus and tool bar pass on. They are internal and never translated.
namespace befehl {
inline constexpr QStringView Öffnen = u"Öffnen";
inline constexpr QStringView BildLaden = u"Bild laden";
inline constexpr QStringView Grafik = u"Grafik";
inline constexpr QStringView Alle = u"Alle";
inline constexpr QStringView Kurven = u"Kurven";
inline constexpr QStringView Korrel = u"Korrel";
inline constexpr QStringView Merkmal = u"Merkmal";
inline constexpr QStringView Tabelle = u"Tabelle";
inline constexpr QStringView Messen = u"Messen";
inline constexpr QStringView Vorschau1 = u"Vorschau 1";
inline constexpr QStringView Vorschau2 = u"Vorschau 2";
} // namespace befehl

/// View and command dispatcher. It knows command words, not windows: whoever can carry out a word
/// registers for it, and whoever shows what can be done next listens.
class Verteiler {
public:
    using Handlung = std::function<void()>;
    using Zuhörer = std::function<void(QStringView)>;

    /// Registers what a command word does. A later registration of the same word takes its place.
    void meldeAn(QStringView wort, Handlung handlung);

    /// Called after each command that was carried out, with its word.
    void nachJedemBefehl(Zuhörer zuhörer) { zuhörer_.push_back(std::move(zuhörer)); }

    /// True when somebody has registered for the word.
    [[nodiscard]] bool kennt(QStringView wort) const;

    /// Carries out a command. False when nobody has registered for the word.
    bool führeAus(QStringView wort);

private:
    std::map<QString, Handlung> handlungen_;
    std::vector<Zuhörer> zuhörer_;
};

} // namespace tarvel
