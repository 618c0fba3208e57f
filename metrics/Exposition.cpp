#include "metrics/Exposition.hpp"

#include <string_view>

namespace metrics {
namespace {

const char* suffixOf(Type type) {
    switch (type) {
    case Type::counter:
        return "_total";
    case Type::info:
        return "_info";
    case Type::gauge:
        break;
    }
    return "";
}

/** Text format 0.0.4 has no type for constant labels. */
const char* wordOf(Type type, Format format) {
    switch (type) {
    case Type::counter:
        return "counter";
    case Type::info:
        return format == Format::openMetrics ? "info" : "gauge";
    case Type::gauge:
        break;
    }
    return "gauge";
}

/** Both formats escape backslashes and line feeds. Only OpenMetrics escapes quotation marks in a help text,
 * so it has none. */
std::string helpText(std::string_view help) {
    std::string text;
    for (const char c : help) {
        if (c == '\\')
            text += "\\\\";
        else if (c == '\n')
            text += "\\n";
        else
            text += c == '"' ? '\'' : c;
    }
    return text;
}

void appendEscaped(std::string& text, std::string_view value) {
    for (const char c : value) {
        if (c == '\\' || c == '"')
            text += '\\';
        if (c == '\n')
            text += "\\n";
        else
            text += c;
    }
}

void appendSample(std::string& text, const std::string& name, const Sample& sample) {
    text += name;
    const char* separator = "{";
    for (const Label& label : sample.labels) {
        text += separator + label.name + "=\"";
        appendEscaped(text, label.value);
        text += '"';
        separator = ",";
    }
    text += (sample.labels.empty() ? " " : "} ") + sample.value + '\n';
}

void appendFamily(std::string& text, const Family& family, Format format) {
    const std::string name = family.name + suffixOf(family.type);
    const std::string& described = format == Format::openMetrics ? family.name : name;
    text += "# HELP " + described + ' ' + helpText(family.help) + '\n';
    text += "# TYPE " + described + ' ' + wordOf(family.type, format) + '\n';
    if (format == Format::openMetrics && !family.unit.empty())
        text += "# UNIT " + described + ' ' + family.unit + '\n';
    for (const Sample& sample : family.samples)
        appendSample(text, name, sample);
}

} // namespace

const char* contentType(Format format) {
    return format == Format::openMetrics ? "application/openmetrics-text; version=1.0.0; charset=utf-8"
                                         : "text/plain; version=0.0.4; charset=utf-8";
}

std::string linesOf(const std::vector<Family>& families, Format format) {
    std::string text;
    for (const Family& family : families) {
        if (!family.samples.empty())
            appendFamily(text, family, format);
    }
    return text;
}

const char* endOf(Format format) {
    return format == Format::openMetrics ? "# EOF\n" : "";
}

} // namespace metrics
