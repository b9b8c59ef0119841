#include "results/schreibweisen.h"

#include <algorithm>
#include <map>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// What spellings of one name have in common.
QString kern(const QString& text) {
    QString mitE = text.normalized(QString::NormalizationForm_C).toCaseFolded().simplified();
    mitE.replace(u'ä', u"ae"_s).replace(u'ö', u"oe"_s).replace(u'ü', u"ue"_s);
    QString kern = sortierschlüssel(mitE);
    // "A. Weiß", "A.Weiß" and "Weiß-Maier", "Weiß Maier"
    kern.removeIf([](QChar c) { return c == u' ' || c == u'.' || c == u'-' || c == u','; });
    return kern;
}

} // namespace

std::vector<Schreibweisen>
gruppiereSchreibweisen(const std::vector<Ergebnistabelle::Anzahl>& texte) {
    std::map<QString, Schreibweisen> nachKern;
    for (const Ergebnistabelle::Anzahl& text : texte) {
        if (const QString gemeinsam = kern(text.text); !gemeinsam.isEmpty()) {
            nachKern[gemeinsam].push_back(text);
        }
    }
    std::vector<Schreibweisen> gruppen;
    for (auto& [gemeinsam, gruppe] : nachKern) {
        if (gruppe.size() > 1) {
            std::stable_sort(gruppe.begin(), gruppe.end(),
                             [](const auto& a, const auto& b) { return a.zeilen > b.zeilen; });
            gruppen.push_back(std::move(gruppe));
        }
    }
    return gruppen;
}

} // namespace tarvel
