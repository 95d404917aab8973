// The least a program on Qt Core costs to start: Qt Core and the libraries behind it loaded and an
// application object made, nothing else. bench/run sets porvane-admin's start-up beside it.
#include <QCoreApplication>

int main(int argc, char* argv[]) {
    const QCoreApplication app(argc, argv);
    return 0;
}
