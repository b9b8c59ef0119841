#include "measure/bildordner.h"

#include "support/testordner.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

TEST(Bildordner, neighbours_followTheNumbersAndEndWithTheFolder) {
    const Testordner ordner;
    for (const QString& name :
         {u"flügel 10.png"_s, u"flügel 9.PNG"_s, u"flügel 1.jpg"_s, u"notiz.txt"_s, u"zz.tiff"_s}) {
        ordner.schreibe(name);
    }
    const auto nachbar = [&](const QString& name, int schritt) {
        return nachbarbild(ordner.filePath(name), schritt).section(u'/', -1);
    };
    EXPECT_EQ(nachbar(u"flügel 1.jpg"_s, 1), u"flügel 9.PNG"_s);
    EXPECT_EQ(nachbar(u"flügel 9.PNG"_s, 1), u"flügel 10.png"_s);
    EXPECT_EQ(nachbar(u"flügel 10.png"_s, -1), u"flügel 9.PNG"_s);
    EXPECT_EQ(nachbar(u"zz.tiff"_s, 1), QString());
    EXPECT_EQ(nachbar(u"flügel 1.jpg"_s, -1), QString());
    EXPECT_EQ(nachbar(u"gelöscht.png"_s, 1), QString());
}
