#include "results/sqlfunktionen.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <QChar>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace tarvel {

namespace {

bool istZiffer(char c) {
    return c >= '0' && c <= '9';
}

/// Walks over the characters of a UTF-8 text, letters in the form in which they compare.
class Zeichenfolge {
public:
    explicit Zeichenfolge(std::string_view text)
        : ort_(text.data())
        , ende_(ort_ + text.size()) {}

    [[nodiscard]] bool amEnde() const { return ort_ == ende_; }

    /// The next character as it stands.
    char32_t nimm() {
        const auto erstes = static_cast<unsigned char>(*ort_++);
        if (erstes < 0xC0) { // ASCII, or a stray byte that stands for itself
            return erstes;
        }
        const int folgen = erstes >= 0xF0 ? 3 : erstes >= 0xE0 ? 2 : 1;
        char32_t zeichen = erstes & (0x3FU >> folgen);
        for (int i = 0; i < folgen && ort_ != ende_ && (*ort_ & 0xC0) == 0x80; ++i) {
            zeichen = (zeichen << 6) | (static_cast<unsigned char>(*ort_++) & 0x3FU);
        }
        return zeichen;
    }

private:
    const char* ort_;
    const char* ende_;
};

char32_t gefaltet(char32_t zeichen) {
    if (zeichen < 0x80) {
        return zeichen >= 'A' && zeichen <= 'Z' ? zeichen + ('a' - 'A') : zeichen;
    }
    return QChar::toCaseFolded(zeichen);
}

std::string_view text(sqlite3_value* wert) {
    const auto* anfang = reinterpret_cast<const char*>(sqlite3_value_text(wert));
    return {anfang != nullptr ? anfang : "", static_cast<size_t>(sqlite3_value_bytes(wert))};
}

bool istNull(sqlite3_value* wert) {
    return sqlite3_value_type(wert) == SQLITE_NULL;
}

void VAL(sqlite3_context* kontext, int, sqlite3_value** werte) {
    if (!istNull(werte[0])) {
        sqlite3_result_double(kontext, zahlAmAnfang(text(werte[0])));
    }
}

void Year(sqlite3_context* kontext, int, sqlite3_value** werte) {
    if (const int jahr = istNull(werte[0]) ? 0 : jahrVon(text(werte[0])); jahr != 0) {
        sqlite3_result_int(kontext, jahr);
    }
}

/// The two letters that an umlaut is written with where a keyboard has none; nullptr for others.
const char* umschrift(char32_t gefaltetes) {
    switch (gefaltetes) {
    case U'ä':
    case U'æ':
        return "ae";
    case U'ö':
    case U'œ':
        return "oe";
    case U'ü':
        return "ue";
    case U'ß':
        return "ss";
    default:
        return nullptr;
    }
}

/// A text in the form in which letters compare.
struct Suchform {
    std::string text;
    /// Where the second of two letters stands that are one: no word begins there.
    std::vector<std::size_t> mitten = {};

    [[nodiscard]] bool enthält(const std::string& wort) const {
        std::size_t ort = text.find(wort);
        while (ort != std::string::npos && std::binary_search(mitten.begin(), mitten.end(), ort)) {
            ort = text.find(wort, ort + 1);
        }
        return ort != std::string::npos;
    }
};

void füge(Suchform& form, std::string_view text) {
    std::string& ziel = form.text;
    Zeichenfolge folge(text);
    while (!folge.amEnde()) {
        const char32_t c = gefaltet(folge.nimm());
        if (c < 0x80) {
            ziel += static_cast<char>(c);
        } else if (const char* zwei = umschrift(c)) {
            ziel += zwei;
            form.mitten.push_back(ziel.size() - 1);
        } else if (c < 0x800) {
            ziel += static_cast<char>(0xC0 | (c >> 6));
            ziel += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            for (const int stelle : {18, 12, 6, 0}) { // only compared, so no need for the shortest
                ziel += static_cast<char>(0x80 | ((c >> stelle) & 0x3F));
            }
        }
    }
}

/// What findet() looks for, folded, and the place to fold a row in.
struct Suche {
    std::vector<std::vector<std::string>> worte;
    Suchform zeile;
};

void findet(sqlite3_context* kontext, int anzahl, sqlite3_value** werte) {
    auto& suche = *static_cast<Suche*>(sqlite3_user_data(kontext));
    Suchform& zeile = suche.zeile;
    zeile.text.clear();
    zeile.mitten.clear();
    for (int i = 0; i < anzahl; ++i) {
        füge(zeile, text(werte[i]));
        zeile.text += '\0'; // no word goes on in the next text
    }
    const auto kommtVor = [&zeile](const std::string& wort) { return zeile.enthält(wort); };
    const bool alle = std::all_of(suche.worte.begin(), suche.worte.end(), [&](const auto& formen) {
        return std::any_of(formen.begin(), formen.end(), kommtVor);
    });
    sqlite3_result_int(kontext, alle ? 1 : 0);
}

/// like(Y, X) and like(Y, X, Z) are what the engine calls for X LIKE Y ESCAPE Z.
void like(sqlite3_context* kontext, int anzahl, sqlite3_value** werte) {
    if (istNull(werte[0]) || istNull(werte[1])) {
        return;
    }
    char32_t flucht = 0;
    if (anzahl == 3) {
        const std::string_view zeichen = text(werte[2]);
        if (zeichen.empty()) {
            return;
        }
        flucht = Zeichenfolge(zeichen).nimm();
    }
    sqlite3_result_int(kontext, istWie(text(werte[1]), text(werte[0]), flucht) ? 1 : 0);
}

} // namespace

double zahlAmAnfang(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double zahl = 0;
    if (text.empty() || !(istZiffer(text.front()) || text.front() == '-' || text.front() == '.')) {
        return zahl; // the reader below would take "inf" and "nan"
    }
    const size_t ende = text.find_first_not_of("0123456789.", 1);
    std::from_chars(text.data(), text.data() + std::min(ende, text.size()), zahl,
                    std::chars_format::fixed);
    return zahl;
}

int jahrVon(std::string_view text) {
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') {
        return 0;
    }
    int jahr = 0;
    for (const char c : text.substr(0, 4)) {
        if (!istZiffer(c)) {
            return 0;
        }
        jahr = jahr * 10 + (c - '0');
    }
    return jahr;
}

bool istWie(std::string_view text, std::string_view muster, char32_t flucht) {
    Zeichenfolge t(text);
    Zeichenfolge m(muster);
    // Where to go on when what follows the last '%' does not fit: one character further.
    std::optional<std::pair<Zeichenfolge, Zeichenfolge>> letztesProzent;
    while (!t.amEnde() || !m.amEnde()) {
        bool passt = false;
        if (!m.amEnde()) {
            char32_t zeichen = m.nimm();
            const bool wörtlich = flucht != 0 && zeichen == flucht && !m.amEnde();
            if (wörtlich) {
                zeichen = m.nimm();
            } else if (zeichen == '%') {
                if (m.amEnde()) {
                    return true;
                }
                letztesProzent.emplace(t, m);
                continue;
            }
            passt = !t.amEnde() &&
                    (gefaltet(t.nimm()) == gefaltet(zeichen) || (zeichen == '_' && !wörtlich));
        }
        if (!passt) {
            if (!letztesProzent || letztesProzent->first.amEnde()) {
                return false;
            }
            letztesProzent->first.nimm();
            std::tie(t, m) = *letztesProzent;
        }
    }
    return true;
}

void registriereVALundYear(SQLite::Database& verbindung) {
    verbindung.createFunction("VAL", 1, true, nullptr, VAL);
    verbindung.createFunction("Year", 1, true, nullptr, Year);
}

void registriereLIKE(SQLite::Database& verbindung) {
    verbindung.createFunction("like", 2, true, nullptr, like);
    verbindung.createFunction("like", 3, true, nullptr, like);
}

void registriereSuche(SQLite::Database& verbindung,
                      const std::vector<std::vector<std::string>>& worte) {
    auto suche = std::make_unique<Suche>();
    for (const auto& formen : worte) {
        auto& gefaltete = suche->worte.emplace_back();
        for (const std::string& form : formen) {
            Suchform wort;
            füge(wort, form);
            gefaltete.push_back(std::move(wort.text));
        }
    }
    const auto räumeAuf = [](void* zeiger) { delete static_cast<Suche*>(zeiger); };
    verbindung.createFunction("findet", -1, false, suche.release(), findet, nullptr, nullptr,
                              räumeAuf);
}

} // namespace tarvel
