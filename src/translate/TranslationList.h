#pragma once
// "Translist.txt": one web translation service per line, its name, "|" and
// an address with "{url}" where the page's address goes; an empty line is a
// separator. Services and separators are numbered apart, from 1, so a blank
// line never shifts a service's number.
#include <QString>
#include <QStringList>
#include <vector>

class TranslationList
{
public:
    static constexpr const char* fileName = "Translist.txt";

    struct Line
    {
        bool separator = false;
        // The service's name and address template; empty for a separator.
        QString name;
        QString address;
    };

    // The list in text. A line without "|" names no service and is skipped.
    static TranslationList parse(const QString& text);
    // The file, empty when it cannot be read.
    static TranslationList read(const QString& path);

    const std::vector<Line>& lines() const { return lines_; }
    int serviceCount() const { return int(templates_.size()); }
    // Service n's address with every "{url}", in any case, made pageAddress
    // percent-encoded; empty when there is no service n.
    QString serviceAddress(int n, const QString& pageAddress) const;

private:
    std::vector<Line> lines_;
    QStringList templates_;
};
