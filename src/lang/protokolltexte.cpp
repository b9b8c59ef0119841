#include "lang/protokolltexte.h"

#include "platform/profil.h"

#include <algorithm>

namespace tarvel {

QByteArray protokollschlüssel(int nummer) {
    return "Item" + QByteArray::number(nummer).rightJustified(3, '0');
}

Protokolltexte ProtokolltexteStandard(const Texte& texte) {
    Protokolltexte protokoll;
    std::transform(protokolltabelle.begin(), protokolltabelle.end(), protokoll.felder.begin(),
                   [&texte](const Protokollzeile& zeile) { return texte(zeile.text); });
    return protokoll;
}

Protokolltexte ProtokolltexteÜbersetzt(const Protokollfelder& felder) {
    return {felder};
}

void ÜbersetzungLaden(const QString& IniPfad, Protokollfelder& felder) {
    constexpr int puffer = 128;
    for (std::size_t i = 0; i < felder.size(); ++i) {
        const QString wert = profiltext("Translate", protokollschlüssel(protokolltabelle[i].nummer),
                                        puffer, IniPfad);
        if (!wert.isEmpty()) {
            felder[i] = wert;
        }
    }
}

} // namespace tarvel
