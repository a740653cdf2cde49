// SPDX-License-Identifier: MIT
#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <cstdlib>

// Makes the manual: a source in HTML in, a PDF of pages in the shape of a window out. Each heading
// of the first level begins a page; "[[heading]]" stands for the number of its page.

using namespace Qt::StringLiterals;

namespace {

constexpr QSizeF pageSize(240, 180); // in millimetres
constexpr QMarginsF margins(16, 12, 16, 12);
constexpr int resolution = 600;
constexpr double footerHeight = 9; // in millimetres

double dots(double millimetres)
{
    constexpr double millimetresPerInch = 25.4;
    return millimetres * resolution / millimetresPerInch;
}

/// A text of which no picture may be missing.
class Book final : public QTextDocument
{
public:
    explicit Book(QString folder) : m_folder(std::move(folder)) {}

protected:
    QVariant loadResource(int, const QUrl& name) override
    {
        QImage picture(m_folder + u'/' + name.path());
        if (picture.isNull())
            qFatal("The picture %s is missing.", qUtf8Printable(name.path()));
        return picture;
    }

private:
    QString m_folder;
};

void layOut(Book& document, const QString& html, QPdfWriter& writer)
{
    document.documentLayout()->setPaintDevice(&writer);
    document.setDefaultFont(QFont(u"DejaVu Sans"_s, 10));
    document.setDocumentMargin(0);
    document.setHtml(html);
    document.setPageSize(QSizeF(writer.width(), writer.height() - dots(footerHeight)));
}

/// The pages that the headings of the first level are on.
QHash<QString, int> chapterPages(const QTextDocument& document)
{
    QHash<QString, int> pages;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() != 1)
            continue;
        const double middle = document.documentLayout()->blockBoundingRect(block).center().y();
        pages.insert(block.text(), 1 + static_cast<int>(middle / document.pageSize().height()));
    }
    return pages;
}

/// The numbers in the place of their references, or signs as wide where they are not known yet.
QString withPageNumbers(QString html, const QHash<QString, int>& pages)
{
    const QRegularExpression reference(u"\\[\\[(.*?)\\]\\]"_s);
    for (auto found = reference.match(html); found.hasMatch(); found = reference.match(html)) {
        const QString heading = found.captured(1);
        if (!pages.isEmpty() && !pages.contains(heading))
            qFatal("The manual has no heading \"%s\".", qUtf8Printable(heading));
        html.replace(found.capturedStart(), found.capturedLength(),
                     pages.isEmpty() ? u"00"_s : QString::number(pages.value(heading)));
    }
    return html;
}

void drawFooter(QPainter& painter, int page, const QSizeF& size)
{
    QFont font = painter.font();
    font.setPointSizeF(8);
    painter.setFont(font);
    painter.setPen(QColor(0x70, 0x70, 0x70));
    const QRectF footer(0, size.height(), size.width(), dots(footerHeight));
    painter.drawText(footer, Qt::AlignLeft | Qt::AlignBottom, u"Tessel Help"_s);
    painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom, QString::number(page));
}

void print(QTextDocument& document, QPdfWriter& writer)
{
    const QSizeF size = document.pageSize();
    QPainter painter(&writer);
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        painter.save();
        painter.translate(0, -page * size.height());
        document.drawContents(&painter, QRectF(QPointF(0, page * size.height()), size));
        painter.restore();
        painter.save();
        drawFooter(painter, page + 1, size);
        painter.restore();
    }
}

/// Another moment and name in the place of those that Qt gives each document: the same source makes
/// the same bytes. The file tells the offsets of its parts, so nothing changes its length.
void forgetMaking(QByteArray& pdf)
{
    const QRegularExpression making(uR"((?<=Date \(D:)\d+|(?<=Date=")[-T:\d]+|(?<=uuid:)[-0-9a-f]+)"
                                    uR"(|(?<=/ID \[ )[^\]]+)"_s);
    auto found = making.globalMatch(QString::fromLatin1(pdf));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        const auto begin = pdf.begin() + match.capturedStart();
        std::replace_if(
            begin, begin + match.capturedLength(),
            [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); }, '1');
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3)
        qFatal("Usage: helpbook SOURCE.html RESULT.pdf");
    QFile source(arguments.at(1));
    if (!source.open(QFile::ReadOnly))
        qFatal("%s: %s", qUtf8Printable(source.fileName()), qUtf8Printable(source.errorString()));

    QFile result(arguments.at(2));
    QBuffer pages;
    if (!result.open(QFile::WriteOnly) || !pages.open(QBuffer::WriteOnly))
        qFatal("%s: %s", qUtf8Printable(result.fileName()), qUtf8Printable(result.errorString()));
    QPdfWriter writer(&pages);
    writer.setTitle(u"Tessel Help"_s);
    writer.setCreator(u"Tessel"_s);
    writer.setResolution(resolution);
    writer.setPageSize(QPageSize(pageSize, QPageSize::Millimeter));
    writer.setPageMargins(margins, QPageLayout::Millimeter);

    const QString html = QString::fromUtf8(source.readAll());
    const QString folder = QFileInfo(source).absolutePath();
    Book draft(folder);
    layOut(draft, withPageNumbers(html, {}), writer);
    Book document(folder);
    layOut(document, withPageNumbers(html, chapterPages(draft)), writer);
    print(document, writer);

    QByteArray pdf = pages.data();
    forgetMaking(pdf);
    return result.write(pdf) == pdf.size() && result.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
