// The least that a window with a menu bar and one word costs: shows one and ends after its first
// paint.

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QTimer>

namespace {

class Wort : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow fenster;
    fenster.menuBar()->addMenu(QStringLiteral("Menu"))->addAction(QStringLiteral("Item"));
    fenster.setCentralWidget(new Wort(QStringLiteral("Word")));
    fenster.resize(1280, 720);
    fenster.show();
    return QApplication::exec();
}
