#include "jsonform.h"

#include "formfiller.h"
#include "jsontext.h"

#include <algorithm>

namespace tavro::assistantservice {

void JsonForm::boolean(const char *key, bool &value)
{
    add(key, FormMember::Kind::Boolean, &value);
}

void JsonForm::text(const char *key, int maximumLength, QString &value)
{
    add(key, FormMember::Kind::Text, &value).maximum = maximumLength;
}

void JsonForm::wholeNumber(const char *key, int minimum, int maximum, int &value)
{
    FormMember &member = add(key, FormMember::Kind::Number, &value);
    member.isWhole = true;
    member.minimum = minimum;
    member.maximum = maximum;
}

void JsonForm::number(const char *key, double minimum, double maximum, double &value)
{
    FormMember &member = add(key, FormMember::Kind::Number, &value);
    member.minimum = minimum;
    member.maximum = maximum;
}

void JsonForm::objects(const char *key, int maximumCount, JsonForm &entry, std::function<void()> take)
{
    FormMember &member = add(key, FormMember::Kind::Objects, nullptr);
    member.maximum = maximumCount;
    member.entry = &entry;
    member.take = std::move(take);
}

FormMember &JsonForm::add(const char *key, FormMember::Kind kind, void *value)
{
    FormMember &member = m_members.emplace_back();
    member.key = key;
    member.kind = kind;
    member.value = value;
    return member;
}

ServiceError JsonForm::fill(const QByteArray &json)
{
    FormFiller filler(*this);
    const ServiceError error = readJsonText(json, filler);
    return error ? error : this->error({});
}

void JsonForm::restart()
{
    for (FormMember &member : m_members) {
        member.seen = false;
        member.count = 0;
        member.wrong.clear();
        member.wrongEntry = {};
    }
}

FormMember *JsonForm::find(const std::string &key)
{
    const auto found = std::find_if(m_members.begin(), m_members.end(),
                                    [&key](const FormMember &member) { return key == member.key; });
    return found == m_members.end() ? nullptr : &*found;
}

ServiceError JsonForm::error(const QString &where) const
{
    for (const FormMember &member : m_members) {
        const QString reason = member.seen ? member.wrong : QStringLiteral("is missing");
        if (!reason.isEmpty()) {
            return {ErrorCode::BadRequest,
                    QStringLiteral("\"%1%2\" %3.").arg(where, QLatin1String(member.key), reason)};
        }
    }
    const auto wrong = std::find_if(m_members.begin(), m_members.end(),
                                    [](const FormMember &member) { return static_cast<bool>(member.wrongEntry); });
    return wrong == m_members.end() ? ServiceError() : wrong->wrongEntry;
}

} // namespace tavro::assistantservice
