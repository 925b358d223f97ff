// qub-filter-check --list FILE [--list FILE ...]: reads requests from
// standard input, one a line as URL<TAB>SOURCE-PAGE-URL<TAB>TYPE, and prints
// for each "block<TAB>FILTER", "allow<TAB>@@FILTER" or "allow". A line it
// cannot read gets a message on standard error and "allow".
#include "protect/filters/FilterEngine.h"
#include "protect/filters/FilterRequest.h"

#include <QFile>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

int usage()
{
    std::cerr << "usage: qub-filter-check --list FILE [--list FILE ...] < REQUESTS\n"
                 "REQUESTS: one a line, URL<TAB>SOURCE-PAGE-URL<TAB>TYPE\n";
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    filters::FilterEngine engine;
    int lists = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) != "--list" || i + 1 == argc)
            return usage();
        QFile file(QString::fromLocal8Bit(argv[++i]));
        if (!file.open(QIODevice::ReadOnly)) {
            std::cerr << "qub-filter-check: cannot read " << argv[i] << ": "
                      << file.errorString().toStdString() << '\n';
            return 2;
        }
        const QByteArray text = file.readAll();
        engine.addList(std::string_view(text.constData(), size_t(text.size())));
        ++lists;
    }
    if (lists == 0)
        return usage();
    engine.build();

    std::ios::sync_with_stdio(false);
    std::string line;
    long number = 0;
    while (std::getline(std::cin, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const size_t first = line.find('\t');
        const size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        std::optional<filters::FilterRequest> request;
        if (second != std::string::npos && line.find('\t', second + 1) == std::string::npos) {
            const std::string_view text = line;
            if (const auto type = filters::requestTypeNamed(text.substr(second + 1)))
                request = filters::FilterRequest::make(
                    text.substr(0, first), text.substr(first + 1, second - first - 1), *type);
        }
        if (!request) {
            std::cerr << "qub-filter-check: line " << number
                      << ": not URL<TAB>SOURCE-PAGE-URL<TAB>TYPE with a known type and an "
                         "address with a host\n";
            std::cout << "allow\n";
            continue;
        }
        const filters::Decision decision = engine.decide(*request);
        if (!decision.filter)
            std::cout << "allow\n";
        else
            std::cout << (decision.block ? "block\t" : "allow\t") << decision.filter->text()
                      << '\n';
    }
    return 0;
}
