#include "app/FjolkApp.h"

#include "app/FjolkWin.h"
#include "platform/QtGeometry.h"

#include <QGuiApplication>
#include <QScreen>

FjolkApp::FjolkApp(AttributeStore& store) {
    QScreen* skarm = QGuiApplication::primaryScreen();
    BRect skarmRam = skarm ? ToBRect(skarm->geometry()) : BRect(0, 0, 1023, 767);
    fonsterRam = GetWindowSize(store, skarmRam);
    fonster = new FjolkWin(fonsterRam, store);
    fonster->setAttribute(Qt::WA_DeleteOnClose, false);
}

FjolkApp::~FjolkApp() {
    delete fonster;
}
