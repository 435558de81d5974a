#include "isolated_main.h"
#include "platform/common_dialog.h"
#include "wizards/body_tag.h"
#include "wizards/char_map.h"
#include "wizards/hyperlink_wizard.h"
#include "wizards/image_wizard.h"
#include "wizards/local_target.h"
#include "wizards/rainbow_font.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

using namespace pw;

Q_DECLARE_METATYPE(std::optional<qint32>)

// The link, picture, body, rainbow and character rules, without a window.
class TestMarkupWizards : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    static QByteArray encoded(const QSize &size, const char *format, bool progressive = false,
                              QImageIOHandler::Transformations turn = QImageIOHandler::TransformationNone)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, format);
        writer.setProgressiveScanWrite(progressive);
        writer.setTransformation(turn);
        writer.write(image);
        return buffer.data();
    }
    // An 88 x 31 screen with one pixel drawn: Qt writes no GIF.
    static QByteArray gif()
    {
        return QByteArray::fromHex("474946383961" "5800" "1f00" "800000" "ffffff000000"
                                   "21f90401000000002c000000000100010000020244" "01003b");
    }

private Q_SLOTS:
    void hyperLinkStart_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("extra");
        QTest::addColumn<QString>("tag");
        QTest::newRow("url alone") << "a.html" << "" << "" << "<A HREF=\"a.html\">";
        QTest::newRow("empty url") << "" << "" << "" << "<A HREF=\"\">";
        QTest::newRow("target as typed, then extras") << "b.html" << "main frame" << "onClick=\"go()\""
                                                      << "<A HREF=\"b.html\" TARGET=\"main frame\" onClick=\"go()\">";
    }
    void hyperLinkStart()
    {
        QFETCH(QString, url);
        QFETCH(QString, target);
        QFETCH(QString, extra);
        QFETCH(QString, tag);
        QCOMPARE(HyperLinkStart({url, target, extra}), tag);
    }

    // The URL field as the resource types, local names and browse button leave it.
    void urlField_data()
    {
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("expected");
        QTest::newRow("protocol in front of a typed host") << WithResourceType("www.x.org", "http://") << "http://www.x.org";
        QTest::newRow("two prefixes") << WithResourceType(WithResourceType("x", "file://"), "ftp://") << "ftp://file://x";
        QTest::newRow("local is # alone") << WithResourceType("", "# (LOCAL)") << "#";
        QTest::newRow("local name behind the page") << WithLocalName("a.html", "top") << "a.html#top";
        QTest::newRow("local name of this page") << WithLocalName("", "top") << "#top";
        QTest::newRow("relative replaces") << BrowsedUrl("http://", "/w/site/sub/b.html", true, "/w/site/a.html", '/')
                                           << "sub/b.html";
        QTest::newRow("absolute appends") << BrowsedUrl("file://", "/w/site/b.html", false, "/w/site/a.html", '/')
                                          << "file:///w/site/b.html";
        QTest::newRow("untitled gives the absolute path") << BrowsedUrl("x", "/w/b.html", true, "", '/') << "/w/b.html";
        QTest::newRow("backslash paths") << BrowsedUrl("", "C:\\site\\img\\b.html", true, "C:\\site\\a.html", '\\')
                                         << "img/b.html";
    }
    void urlField()
    {
        QFETCH(QString, result);
        QFETCH(QString, expected);
        QCOMPARE(result, expected);
    }

    void imageTag_data()
    {
        QTest::addColumn<ImageOptions>("options");
        QTest::addColumn<QString>("tag");
        ImageOptions o;
        o.source = "a.gif";
        QTest::newRow("source alone") << o << "<IMG SRC=\"a.gif\">";
        o.alt = "logo";
        o.border = "0";
        o.height = "32";
        o.width = "88";
        o.alignment = 4;
        QTest::newRow("the example") << o << "<IMG SRC=\"a.gif\" ALT=\"logo\" BORDER=0 HEIGHT=32 WIDTH=88 ALIGN=\"LEFT\">";
        o.vspace = "2";
        o.hspace = "3";
        o.useMap = "nav";
        o.alignment = 6;
        o.isMap = true;
        o.extraTags = "NAME=x";
        QTest::newRow("every attribute in its order")
            << o << "<IMG SRC=\"a.gif\" ALT=\"logo\" BORDER=0 HEIGHT=32 WIDTH=88 VSPACE=2 HSPACE=3 USEMAP=\"#nav\" "
                    "ALIGN=\"TEXTOP\" ISMAP NAME=x>";
        for (const auto &[index, value] : {std::pair{7, "ABSMIDDLE"}, {8, "ABSBOTTOM"}, {2, "MIDDLE"}}) {
            ImageOptions a;
            a.source = "b.png";
            a.alignment = index;
            QTest::newRow(value) << a << QStringLiteral("<IMG SRC=\"b.png\" ALIGN=\"%1\">").arg(value);
        }
    }
    void imageTag()
    {
        QFETCH(ImageOptions, options);
        QFETCH(QString, tag);
        QCOMPARE(CheckImageOptions(options), ImageFault::None);
        QCOMPARE(ImageTag(options), tag);
    }

    // Tags of a page read back into the wizards' options and written again.
    void tagReadBack_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("rewritten");
        const QString full = QStringLiteral("<IMG SRC=\"a.gif\" ALT=\"a logo\" BORDER=0 HEIGHT=32 WIDTH=88 VSPACE=2 "
                                            "HSPACE=3 USEMAP=\"#nav\" ALIGN=\"TEXTOP\" ISMAP NAME=x>");
        QTest::newRow("picture, every field") << full << full;
        QTest::newRow("picture in lower case") << "<img src=b.png align=texttop onclick=\"go()\">"
                                               << "<IMG SRC=\"b.png\" ALIGN=\"TEXTOP\" onclick=\"go()\">";
        QTest::newRow("an alignment the wizard lacks") << "<IMG SRC=\"a\" ALIGN=CENTER>" << "<IMG SRC=\"a\" ALIGN=CENTER>";
        QTest::newRow("link") << "<A HREF=\"x.html\" TARGET=\"_top\" NAME=\"n\">" << "<A HREF=\"x.html\" TARGET=\"_top\" NAME=\"n\">";
        QTest::newRow("link in lower case") << "<a\r\nhref=x.html>" << "<A HREF=\"x.html\">";
    }
    void tagReadBack()
    {
        QFETCH(QString, tag);
        QFETCH(QString, rewritten);
        const ParsedTag parsed = ParseTag(tag);
        QVERIFY(!parsed.broken);
        QCOMPARE(parsed.name == QLatin1String("IMG") ? ImageTag(ImageOptionsFromTag(parsed))
                                                     : HyperLinkStart(HyperLinkOptionsFromTag(parsed)),
                 rewritten);
    }

    // The first field at fault, in the order of the attributes.
    void imageChecks_data()
    {
        QTest::addColumn<QStringList>("fields"); // source, border, height, width, vspace, hspace
        QTest::addColumn<QString>("message");
        QTest::newRow("no source") << QStringList{"", "x", "", "", "", ""} << "You must supply an image source!";
        QTest::newRow("border before height") << QStringList{"a", "x", "y", "", "", ""} << "Border size must be numeric!";
        QTest::newRow("height") << QStringList{"a", "1", "tall", "z", "", ""} << "Height must be numeric!";
        QTest::newRow("width") << QStringList{"a", "", "2.5", "1e3", "", ""} << "Width must be numeric!";
        QTest::newRow("vspace") << QStringList{"a", "", "", "", "-", "x"} << "VSpace must be numeric!";
        QTest::newRow("hspace") << QStringList{"a", "", "", "", " 4 ", "4px"} << "HSpace must be numeric!";
    }
    void imageChecks()
    {
        QFETCH(QStringList, fields);
        QFETCH(QString, message);
        ImageOptions o;
        o.source = fields[0];
        o.border = fields[1];
        o.height = fields[2];
        o.width = fields[3];
        o.vspace = fields[4];
        o.hspace = fields[5];
        QCOMPARE(ImageFaultMessage(CheckImageOptions(o)), message);
    }

    // Sizes from the pictures' headers, known by content; anything else gives none.
    void pictureSize_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("size");
        QTest::newRow("gif") << gif() << "logo.gif" << QSize(88, 31);
        QTest::newRow("png") << encoded({40, 12}, "png") << "a.png" << QSize(40, 12);
        QTest::newRow("bmp") << encoded({7, 5}, "bmp") << "a.bmp" << QSize(7, 5);
        QTest::newRow("jpeg") << encoded({64, 48}, "jpeg") << "a.jpg" << QSize(64, 48);
        QTest::newRow("progressive jpeg") << encoded({64, 48}, "jpeg", true) << "p.jpg" << QSize(64, 48);
        QTest::newRow("jpeg turned by its exif mark")
            << encoded({64, 48}, "jpeg", false, QImageIOHandler::TransformationRotate90) << "r.jpg" << QSize(48, 64);
        QTest::newRow("png named gif") << encoded({9, 3}, "png") << "wrong.gif" << QSize(9, 3);
        QTest::newRow("truncated header") << encoded({40, 12}, "png").left(14) << "cut.png" << QSize();
        QTest::newRow("text named gif") << QByteArray("GIF is a format\n") << "text.gif" << QSize();
        QTest::newRow("empty") << QByteArray() << "empty.gif" << QSize();
    }
    void pictureSize()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        QFETCH(QSize, size);
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QCOMPARE(PictureSize(file.fileName()).value_or(QSize()), size);
    }

    void pictureSizeOfNoFile()
    {
        QVERIFY(!PictureSize(dir.filePath("missing.gif")));
        QVERIFY(!PictureSize(dir.path())); // a folder
        QVERIFY(!PictureSize(QString()));
    }

    // The browse filters as the file dialog takes them: "All" shows every file, with or without a dot.
    void browseFilters_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("nameFilters");
        QTest::newRow("pictures") << PictureFilter
                                  << QStringList{"jpeg; gif (*.jpg; *.gif) (*.jpg *.gif)", "jpeg (*.jpg) (*.jpg)",
                                                 "gif (*.gif) (*.gif)", "All (*.*) (*)"};
        QTest::newRow("pages, blanks between patterns")
            << "HTML (*.html; *.htm; *.shtml)|*.html; *.htm; *.shtml|All (*.*)|*.*"
            << QStringList{"HTML (*.html; *.htm; *.shtml) (*.html *.htm *.shtml)", "All (*.*) (*)"};
    }
    void browseFilters()
    {
        QFETCH(QString, filter);
        QFETCH(QStringList, nameFilters);
        QCOMPARE(CommonDialog::nameFilters(filter), nameFilters);
    }

    void picturePath_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("relative");
        QTest::addColumn<QString>("path");
        QTest::newRow("beside the page") << "img/a.gif" << true << "/w/site/img/a.gif";
        QTest::newRow("up a folder") << "../a.gif" << true << "/w/site/../a.gif";
        QTest::newRow("absolute stays") << "/pics/a.gif" << true << "/pics/a.gif";
        QTest::newRow("no base reference") << "img/a.gif" << false << "img/a.gif";
    }
    void picturePath()
    {
        QFETCH(QString, source);
        QFETCH(bool, relative);
        QFETCH(QString, path);
        QCOMPARE(PicturePath(source, relative, "/w/site/index.html", '/'), path);
    }

    // Local targets in a site of the test's: site/index.html, site/img/Logo.gif.
    void localTarget_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("titled");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("found"); // under the site's folder
        QTest::newRow("there") << "img/Logo.gif" << true << int(TargetCheck::Fine) << "";
        QTest::newRow("file in another case") << "img/logo.gif" << true << int(TargetCheck::CaseDiffers) << "img/Logo.gif";
        QTest::newRow("folder in another case") << "IMG/Logo.gif" << true << int(TargetCheck::CaseDiffers) << "img/Logo.gif";
        QTest::newRow("missing") << "img/none.gif" << true << int(TargetCheck::Missing) << "";
        QTest::newRow("a name behind") << "index.html#top" << true << int(TargetCheck::Fine) << "";
        QTest::newRow("escaped blank") << "my%20page.html" << true << int(TargetCheck::Fine) << "";
        QTest::newRow("up and down again") << "../site/img/Logo.gif" << true << int(TargetCheck::Fine) << "";
        QTest::newRow("a name alone") << "#top" << true << int(TargetCheck::NotLocal) << "";
        QTest::newRow("another scheme") << "http://x.org/a.gif" << true << int(TargetCheck::NotLocal) << "";
        QTest::newRow("mail") << "mailto:a@x.org" << true << int(TargetCheck::NotLocal) << "";
        QTest::newRow("empty") << "" << true << int(TargetCheck::NotLocal) << "";
        QTest::newRow("untitled page") << "img/none.gif" << false << int(TargetCheck::NotLocal) << "";
    }
    void localTarget()
    {
        QFETCH(QString, url);
        QFETCH(bool, titled);
        QFETCH(int, kind);
        QFETCH(QString, found);
        QDir(dir.path()).mkpath(QStringLiteral("site/img"));
        for (const char *name : {"site/index.html", "site/img/Logo.gif", "site/my page.html"}) {
            QFile file(dir.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const QString site = dir.filePath(QStringLiteral("site"));
        const TargetCheck check = CheckLocalTarget(url, titled ? site + QStringLiteral("/index.html") : QString());
        QCOMPARE(int(check.kind), kind);
        QCOMPARE(check.found, found.isEmpty() ? QString() : site + QLatin1Char('/') + found);
        QCOMPARE(TargetCheckText(check).isEmpty(), kind == TargetCheck::NotLocal || kind == TargetCheck::Fine);
    }
    void localTargetAbsolute()
    {
        const QString file = dir.filePath(QStringLiteral("Abs.gif"));
        QFile(file).open(QIODevice::WriteOnly);
        QCOMPARE(CheckLocalTarget(QStringLiteral("file://") + file, QString()).kind, TargetCheck::Fine);
        QCOMPARE(CheckLocalTarget(dir.filePath(QStringLiteral("abs.gif")), QString()).kind, TargetCheck::CaseDiffers);
    }

    void hexToColor_data()
    {
        QTest::addColumn<QString>("digits");
        QTest::addColumn<std::optional<qint32>>("color");
        QTest::newRow("red comes last") << "FF0000" << std::optional<qint32>(0x0000FF);
        QTest::newRow("blue comes first") << "0000FF" << std::optional<qint32>(0xFF0000);
        QTest::newRow("mixed") << "1A2B3C" << std::optional<qint32>(0x3C2B1A);
        QTest::newRow("padded on the left") << "FF" << std::optional<qint32>(0xFF0000);
        QTest::newRow("empty is black") << "" << std::optional<qint32>(0);
        QTest::newRow("lower case digits give 0") << "ff8000" << std::optional<qint32>(0x008000);
        QTest::newRow("seven digits") << "FFFFFF0" << std::optional<qint32>();
    }
    void hexToColor()
    {
        QFETCH(QString, digits);
        QFETCH(std::optional<qint32>, color);
        QCOMPARE(HexToColor(digits), color);
    }

    // The working copy's attributes: a blank and the name, case included; a value ends at a blank.
    void bodyTagEdits_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value"); // a null value deletes
        QTest::addColumn<QString>("after");
        QTest::newRow("adding") << "<BODY>" << "BACKGROUND" << "a.gif" << "<BODY BACKGROUND=\"a.gif\">";
        QTest::newRow("adding behind another") << "<BODY BACKGROUND=\"a.gif\">" << "TEXT" << "#FF0000"
                                               << "<BODY BACKGROUND=\"a.gif\" TEXT=\"#FF0000\">";
        QTest::newRow("replacing in place") << "<BODY TEXT=\"#000000\" BGCOLOR=\"#C0C0C0\">" << "TEXT" << "#FF0000"
                                            << "<BODY TEXT=\"#FF0000\" BGCOLOR=\"#C0C0C0\">";
        QTest::newRow("link is not vlink") << "<BODY VLINK=\"#800080\">" << "LINK" << "#0000FF"
                                           << "<BODY VLINK=\"#800080\" LINK=\"#0000FF\">";
        QTest::newRow("a quoted value leaves its tail") << "<BODY BACKGROUND=\"my pic.gif\">" << "BACKGROUND" << "b.gif"
                                                        << "<BODY BACKGROUND=\"b.gif\" pic.gif\">";
        QTest::newRow("lower case is not seen") << "<body bgcolor=\"#FFFFFF\">" << "BGCOLOR" << "#000000"
                                                << "<body bgcolor=\"#FFFFFF\" BGCOLOR=\"#000000\">";
        QTest::newRow("deleting") << "<BODY BACKGROUND=\"a.gif\" TEXT=\"#FF0000\">" << "BACKGROUND" << QString()
                                  << "<BODY TEXT=\"#FF0000\">";
        QTest::newRow("deleting the last") << "<BODY TEXT=\"#FF0000\">" << "TEXT" << QString() << "<BODY>";
        QTest::newRow("deleting what is not there") << "<BODY>" << "TEXT" << QString() << "<BODY>";
    }
    void bodyTagEdits()
    {
        QFETCH(QString, tag);
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, after);
        QCOMPARE(value.isNull() ? DeleteSubTag(tag, name) : Updatetag(tag, name, value), after);
    }

    void bodyPreload_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("texture");
        QTest::addColumn<qint32>("background"); // -1: not read
        QTest::addColumn<qint32>("link");       // -1: not read
        QTest::addColumn<bool>("nonStandard");
        QTest::newRow("all read") << "<BODY BACKGROUND=\"img/Paper.gif\" BGCOLOR=\"#C0C0C0\" LINK=\"#00FF00\">"
                                  << "img/Paper.gif" << 0xC0C0C0 << 0x00FF00 << false;
        QTest::newRow("lower case keeps its values") << "<body background=\"Tile.JPG\" link=\"#0000FF\">" << "Tile.JPG"
                                                     << -1 << 0xFF0000 << false;
        QTest::newRow("unquoted colours") << "<BODY BGCOLOR=#FFFFFF LINK=#FF0000>" << "" << 0xFFFFFF << 0x0000FF << false;
        QTest::newRow("vlink is not link") << "<BODY VLINK=\"#FF0000\">" << "" << -1 << -1 << false;
        QTest::newRow("a colour by name is not read") << "<BODY BGCOLOR=\"white\" LINK=\"#0000FF\">" << "" << -1
                                                      << 0xFF0000 << false;
        QTest::newRow("a > in a quoted onload") << "<BODY ONLOAD=\"if (a > b) go()\" LINK=\"#00FF00\">" << "" << -1
                                                << 0x00FF00 << false;
        QTest::newRow("unquoted background") << "<BODY BACKGROUND=a.gif>" << "" << -1 << -1 << true;
        QTest::newRow("unquoted onload") << "<BODY ONLOAD=go()>" << "" << -1 << -1 << true;
        QTest::newRow("seven digits") << "<BODY BGCOLOR=\"#FFFFFF0\">" << "" << -1 << -1 << true;
        QTest::newRow("no >") << "<BODY LINK=\"#00FF00\"" << "" << -1 << 0x00FF00 << true;
    }
    void bodyPreload()
    {
        QFETCH(QString, tag);
        QFETCH(QString, texture);
        QFETCH(qint32, background);
        QFETCH(qint32, link);
        QFETCH(bool, nonStandard);
        const BodyPreload read = ReadBodyTag(tag);
        QCOMPARE(read.texture, texture);
        QCOMPARE(read.background.value_or(-1), background);
        QCOMPARE(read.colors[1].value_or(-1), link);
        QCOMPARE(read.nonStandard, nonStandard);
    }

    // Each check in its order, with the field before it good.
    void rainbowChecks_data()
    {
        QTest::addColumn<QStringList>("fields"); // min, max, start, variance, change, text
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, QStringList fields, const QString &message) {
            QTest::newRow(name) << fields << message;
        };
        row("min not numeric", {"a", "x", "3", "1", "1", "abc"}, "Minimum size must be numeric!");
        row("min below 1", {"0", "x", "3", "1", "1", "abc"}, "Minimum size must between 1 and 7!");
        row("max not numeric", {"1", "", "3", "1", "1", "abc"}, "Maximum size must be numeric!");
        row("max above 7", {"1", "7.5", "3", "1", "1", "abc"}, "Maximum size must between 1 and 7!");
        row("max equal to min", {"1", "1", "3", "1", "1", "abc"}, "Maximum size must be greater then Minimum size!");
        row("compared as texts", {"2", "02", "3", "1", "1", "abc"}, "Maximum size must be greater then Minimum size!");
        row("start not numeric", {"1", "7", "big", "1", "1", "abc"}, "Starting size must be numeric!");
        row("start above 7", {"1", "7", "8", "1", "1", "abc"}, "Starting size must between 1 and 7!");
        row("variance not numeric", {"1", "7", "3", "?", "1", "abc"}, "Variance must be numeric!");
        row("variance above 6", {"1", "7", "3", "7", "1", "abc"}, "Variance must between 1 and 6!");
        row("change not numeric", {"1", "7", "3", "1", "x", ""}, "Change every must be numeric!");
        row("step below 1", {"1", "7", "3", "1", "0.5", "abc"}, "Change every must be at least 1!");
        row("no text", {"1", "7", "3", "1", "1", ""}, "No text supplied!");
        row("change beyond the text", {"1", "7", "3", "1", "4", "abc"},
            "The current setting for Change every\r\nwill not result in any font change before\r\nthe text will end!");
        row("change equal to the length", {"1", "7", "3", "1", "3", "abc"}, "");
    }
    void rainbowChecks()
    {
        QFETCH(QStringList, fields);
        QFETCH(QString, message);
        const RainbowOptions o{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
        QCOMPARE(RainbowMessage(CheckRainbowOptions(o)), message);
    }

    void rainbow_data()
    {
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("markup");
        QTest::newRow("the example") << QStringList{"1", "3", "2", "1", "2", "ABCDEFG"}
                                     << "<FONT SIZE=2>AB</FONT><FONT SIZE=3>CD</FONT><FONT SIZE=3>EF</FONT>"
                                        "<FONT SIZE=2>G</FONT>";
        QTest::newRow("one character") << QStringList{"1", "7", "3", "1", "1", "x"} << "<FONT SIZE=3>x</FONT>";
        QTest::newRow("start outside the range") << QStringList{"2", "4", "7", "2", "1", "abcd"}
                                                 << "<FONT SIZE=7>a</FONT><FONT SIZE=4>b</FONT><FONT SIZE=2>c</FONT>"
                                                    "<FONT SIZE=2>d</FONT>";
        QTest::newRow("non-whole start rounds") << QStringList{"1", "7", "2.5", "1", "1", "ab"}
                                                << "<FONT SIZE=3>a</FONT><FONT SIZE=4>b</FONT>";
        QTest::newRow("CR LF stays whole") << QStringList{"1", "7", "3", "1", "2", "a\r\nb"}
                                           << "<FONT SIZE=3>a\r\n</FONT><FONT SIZE=4>b</FONT>";
        QTest::newRow("a pair stays whole") << QStringList{"1", "7", "3", "1", "1", QString::fromUtf8("x\xF0\x9F\x98\x80")}
                                            << QString::fromUtf8("<FONT SIZE=3>x</FONT><FONT SIZE=4>\xF0\x9F\x98\x80</FONT>");
        QTest::newRow("a mark stays with its letter") << QStringList{"1", "7", "3", "1", "1", QString::fromUtf8("e\xCC\x81z")}
                                                      << QString::fromUtf8("<FONT SIZE=3>e\xCC\x81</FONT><FONT SIZE=4>z</FONT>");
    }
    void rainbow()
    {
        QFETCH(QStringList, fields);
        QFETCH(QString, markup);
        const RainbowOptions o{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
        QCOMPARE(CheckRainbowOptions(o), RainbowFault::None);
        QString text;
        for (const MarkupPiece &piece : RainbowPieces(o))
            text += piece.text;
        QCOMPARE(text, markup);
    }

    void rainbowDefaultRun()
    {
        RainbowOptions o;
        o.text = QStringLiteral("ABCDEFGHIJKLM");
        QCOMPARE(CheckRainbowOptions(o), RainbowFault::None);
        QStringList sizes;
        const QList<MarkupPiece> pieces = RainbowPieces(o);
        for (qsizetype i = 0; i < pieces.size(); i += 3) {
            QVERIFY(pieces[i].isTag && !pieces[i + 1].isTag && pieces[i + 2].isTag);
            sizes << pieces[i].text.mid(11, 1);
        }
        QCOMPARE(sizes.join(QLatin1Char(' ')), QStringLiteral("3 4 5 6 7 7 6 5 4 3 2 1 1"));
    }

    void charMapEntries()
    {
        const QStringList entries = CharMapEntries();
        QCOMPARE(entries.size(), 96);
        // The names of Latin-1's entity set, from another table than the program's.
        const QStringList names = QStringLiteral(
            "nbsp copy reg Agrave Aacute Acirc Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute "
            "Icirc Iuml ETH Ntilde Ograve Oacute Ocirc Otilde Ouml Oslash Ugrave Uacute Ucirc Uuml Yacute THORN szlig "
            "agrave aacute acirc atilde auml aring aelig ccedil egrave eacute ecirc euml igrave iacute icirc iuml eth "
            "ntilde ograve oacute ocirc otilde ouml oslash ugrave uacute ucirc uuml yacute thorn yuml").split(' ');
        qsizetype named = 0;
        for (int code = 160; code <= 255; ++code) {
            const QString entry = entries[code - 160];
            QString expected = QChar(code) + QStringLiteral(" - &#%1;").arg(code);
            const bool hasName = code == 160 || code == 169 || code == 174 || (code >= 192 && code != 215 && code != 247);
            if (hasName)
                expected += QStringLiteral("  &") + names[named++] + QLatin1Char(';');
            QCOMPARE(entry, expected);
        }
        QCOMPARE(named, names.size());
    }

    void charMapCode_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("descriptive");
        QTest::addColumn<QString>("placed");
        QTest::newRow("number") << 233 << false << "&#233;";
        QTest::newRow("name") << 233 << true << "&eacute;";
        QTest::newRow("no name: the number") << 161 << true << "&#161;";
        QTest::newRow("times has no name") << 215 << true << "&#215;";
        QTest::newRow("copy") << 169 << true << "&copy;";
        QTest::newRow("AElig") << 198 << true << "&AElig;";
    }
    void charMapCode()
    {
        QFETCH(int, code);
        QFETCH(bool, descriptive);
        QFETCH(QString, placed);
        QCOMPARE(CharMapCode(CharMapEntries().at(code - 160), descriptive), placed);
    }
};

PW_TEST_MAIN(TestMarkupWizards)
#include "tst_markup_wizards.moc"
