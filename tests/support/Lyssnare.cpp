#include "support/Lyssnare.h"

#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>

void SattTillganglighet(bool pa) {
    if (QPlatformIntegration* plattform = QGuiApplicationPrivate::platformIntegration())
        if (QPlatformAccessibility* tillganglighet = plattform->accessibility())
            tillganglighet->setActive(pa);
}
