#include "lang/qt_uebersetzung.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

QString abbrechen() {
    return QCoreApplication::translate("QPlatformTheme", "Cancel");
}

TEST(QtÜbersetzung, languageChange_swapsTheToolkitsWords) {
    Texte texte(u"/p"_s);
    {
        const QtÜbersetzung übersetzung(texte, u"/nowhere"_s);
        EXPECT_EQ(abbrechen(), u"Abbrechen"_s);
        texte.SpracheFranzösisch();
        EXPECT_EQ(abbrechen(), u"Annuler"_s);
        texte.SpracheEnglisch();
        EXPECT_EQ(abbrechen(), u"Cancel"_s);
        texte.SpracheDeutsch();
        EXPECT_EQ(abbrechen(), u"Abbrechen"_s);
    }
    EXPECT_EQ(abbrechen(), u"Cancel"_s);
}

} // namespace
} // namespace tarvel
