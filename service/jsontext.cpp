#include "jsontext.h"

#include <nlohmann/json.hpp>

namespace tavro::assistantservice {

namespace {

ServiceError badRequest(const QString &message)
{
    return {ErrorCode::BadRequest, message};
}

// The parser says where it was, what is wrong, and at length what it read and would have liked.
QString reasonOf(const char *words)
{
    constexpr uint longest = 300;
    const QString all = QString::fromLatin1(words, static_cast<int>(qstrnlen(words, longest)));
    return all.section(QStringLiteral("] "), 1)
        .section(QStringLiteral(" - "), -1)
        .section(QLatin1Char(';'), 0, 0)
        .section(QStringLiteral(" parsing"), 0, 0);
}

// Hands on what the parser finds. Whatever comes back as false ends the parsing.
class Events final : public nlohmann::json::json_sax_t {
public:
    explicit Events(FormFiller &filler)
        : m_filler(filler)
    { }

    const ServiceError &error() const { return m_error; }

    bool null() override
    {
        m_filler.null();
        return true;
    }
    bool boolean(bool value) override
    {
        m_filler.boolean(value);
        return true;
    }
    bool number_integer(number_integer_t value) override { return number(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return number(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t & /*text*/) override { return number(value); }
    bool string(string_t &value) override
    {
        m_filler.text(value);
        return true;
    }
    bool binary(binary_t & /*value*/) override { return false; }
    bool start_object(size_t /*count*/) override
    {
        m_filler.beginObject();
        return deeper();
    }
    bool start_array(size_t /*count*/) override
    {
        m_filler.beginList();
        return deeper();
    }
    bool end_object() override { return end(); }
    bool end_array() override { return end(); }
    bool key(string_t &name) override
    {
        return m_filler.key(name) || fail(QStringLiteral("The request names a member twice."));
    }
    bool parse_error(size_t position, const std::string & /*token*/,
                     const nlohmann::json::exception &exception) override
    {
        return fail(QStringLiteral("The request is not valid JSON (at byte %1: %2).")
                        .arg(position)
                        .arg(reasonOf(exception.what())));
    }

private:
    bool number(double value)
    {
        m_filler.number(value);
        return true;
    }
    bool deeper()
    {
        constexpr int deepest = 1024;
        return ++m_depth <= deepest || fail(QStringLiteral("The request is not valid JSON: it is nested too deeply."));
    }
    bool end()
    {
        m_filler.end();
        --m_depth;
        return true;
    }
    bool fail(const QString &message)
    {
        m_error = badRequest(message);
        return false;
    }

    FormFiller &m_filler;
    ServiceError m_error;
    int m_depth = 0;
};

} // namespace

ServiceError readJsonText(const QByteArray &json, FormFiller &filler)
{
    Events events(filler);
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), &events)) {
        return events.error();
    }
    return filler.isObject() ? ServiceError() : badRequest(QStringLiteral("The request must be a JSON object."));
}

} // namespace tavro::assistantservice
