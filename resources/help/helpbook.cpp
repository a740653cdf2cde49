// SPDX-License-Identifier: MIT
#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <cmath>
#include <cstdlib>

// Makes the manual: a source in HTML in, a PDF of pages in the shape of a window out. Each heading
// of the first level begins a page; "[[heading]]" stands for the number of its page.

using namespace Qt::StringLiterals;

namespace {

constexpr QSizeF pageSize(220, 165); // in millimetres
constexpr QMarginsF margins(16, 12, 16, 12);
constexpr int resolution = 600;
constexpr double footerHeight = 9; // in millimetres

double dots(double millimetres)
{
    constexpr double millimetresPerInch = 25.4;
    return millimetres * resolution / millimetresPerInch;
}

int pageOf(const QTextBlock& block, double pageHeight)
{
    const QTextDocument& document = *block.document();
    const double top = document.documentLayout()->blockBoundingRect(block).top();
    return 1 + static_cast<int>(std::floor(top / pageHeight));
}

QString pageNumber(const QTextDocument& document, const QString& heading)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 1 && block.text() == heading)
            return QString::number(pageOf(block, document.pageSize().height()));
    }
    qFatal("The manual has no heading \"%s\".", qUtf8Printable(heading));
}

void fillInPageNumbers(QTextDocument& document)
{
    const QRegularExpression reference(u"\\[\\[(.*?)\\]\\]"_s);
    for (QTextCursor found = document.find(reference); !found.isNull();
         found = document.find(reference)) {
        const QString text = found.selectedText();
        found.insertText(pageNumber(document, text.mid(2, text.size() - 4)));
    }
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

    QPdfWriter writer(arguments.at(2));
    writer.setTitle(u"Tessel Help"_s);
    writer.setCreator(u"Tessel"_s);
    writer.setResolution(resolution);
    writer.setPageSize(QPageSize(pageSize, QPageSize::Millimeter));
    writer.setPageMargins(margins, QPageLayout::Millimeter);

    QTextDocument document;
    document.setBaseUrl(QUrl::fromLocalFile(QFileInfo(source).absolutePath() + u'/'));
    document.documentLayout()->setPaintDevice(&writer);
    document.setDefaultFont(QFont(u"DejaVu Sans"_s, 10));
    document.setDocumentMargin(0);
    document.setHtml(QString::fromUtf8(source.readAll()));
    document.setPageSize(QSizeF(writer.width(), writer.height() - dots(footerHeight)));
    fillInPageNumbers(document);
    print(document, writer);
    return EXIT_SUCCESS;
}
