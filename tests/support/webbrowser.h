#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

// Takes the place of the program that opens addresses of this scheme, while it lives.
class WebBrowser : public QObject
{
    Q_OBJECT

public:
    explicit WebBrowser(const QString& scheme = "https") : scheme(scheme)
    {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~WebBrowser() override
    {
        QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> opened;

public slots:
    void open(const QUrl& url)
    {
        opened << url;
    }

private:
    const QString scheme;
};
