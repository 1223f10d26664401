#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

// Takes the place of the web browser while it lives.
class WebBrowser : public QObject
{
    Q_OBJECT

public:
    WebBrowser()
    {
        QDesktopServices::setUrlHandler("https", this, "open");
    }
    ~WebBrowser() override
    {
        QDesktopServices::unsetUrlHandler("https");
    }

    QList<QUrl> opened;

public slots:
    void open(const QUrl& url)
    {
        opened << url;
    }
};
