// Starts every test program: the toolkit must exist before any test touches a font or a widget,
// and no test may depend on the language or the place the machine is set to.

#include <QApplication>
#include <QLocale>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
