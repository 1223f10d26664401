#include "system/probes.h"

#include "system/commandrunner.h"
#include "system/toolpaths.h"

#include <QDesktopServices>
#include <QUrl>

bool isJoined()
{
    QString discarded;
    return runCmd(Tools::domainCommand, &discarded) == 0;
}

bool isEnrolled()
{
    const std::string profiles = getReturnValue(Tools::profilesCommand);
    return profiles.find("com.morvanta.osx.MDM") != std::string::npos;
}

bool download_mac_agent()
{
    const QString address = QStringLiteral("https://%1/AppLoad?noumc=1").arg(enrollmentHost);
    return QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}
