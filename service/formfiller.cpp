#include "formfiller.h"

#include <cmath>
#include <numeric>

namespace tavro::assistantservice {

namespace {

using Kind = FormMember::Kind;

QString nameOfKind(const FormMember &member)
{
    switch (member.kind) {
    case Kind::Boolean:
        return QStringLiteral("true or false");
    case Kind::Text:
        return QStringLiteral("a text");
    case Kind::Number:
        return member.isWhole ? QStringLiteral("a whole number") : QStringLiteral("a number");
    case Kind::Objects:
        return QStringLiteral("a list");
    }
    return {};
}

// In UTF-16 units, without making them: a text that is too long need not be converted to be refused.
qint64 lengthOf(const std::string &utf8)
{
    const auto add = [](qint64 sum, char c) {
        constexpr unsigned char firstOfFour = 0xF0;
        const auto byte = static_cast<unsigned char>(c);
        const bool goesOn = (byte & 0xC0U) == 0x80U;
        return sum + (goesOn ? 0 : byte >= firstOfFour ? 2 : 1);
    };
    return std::accumulate(utf8.begin(), utf8.end(), qint64(0), add);
}

// Counts the entry; false where nothing of it is wanted, because the list is wrong already.
bool isWantedEntry(FormMember &list)
{
    if (++list.count > list.maximum) {
        list.wrong = QStringLiteral("holds more than %1 entries").arg(static_cast<int>(list.maximum));
    }
    return list.wrong.isEmpty() && !list.wrongEntry;
}

QString nameOfEntry(const FormMember &list)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(list.key)).arg(list.count - 1);
}

} // namespace

FormFiller::FormFiller(JsonForm &form)
    : m_form(form)
{ }

// The member that a value goes to. Null where there is none; where the form wants a value of another kind it is told.
FormMember *FormFiller::wanted(std::optional<FormMember::Kind> kind)
{
    if (m_skipped > 0) {
        return nullptr;
    }
    if (m_levels.empty()) {
        m_isObject = false;
        return nullptr;
    }
    if (FormMember *const list = m_levels.back().list) {
        if (isWantedEntry(*list)) {
            list->wrongEntry = {ErrorCode::BadRequest,
                                QStringLiteral("\"%1\" must be an object.").arg(nameOfEntry(*list))};
        }
        return nullptr;
    }
    if (m_member != nullptr && m_member->kind != kind) {
        m_member->wrong = QStringLiteral("must be %1").arg(nameOfKind(*m_member));
        return nullptr;
    }
    return m_member;
}

void FormFiller::null()
{
    wanted(std::nullopt);
}

void FormFiller::boolean(bool value)
{
    if (const FormMember *const member = wanted(Kind::Boolean)) {
        *static_cast<bool *>(member->value) = value;
    }
}

void FormFiller::number(double value)
{
    FormMember *const member = wanted(Kind::Number);
    if (member == nullptr) {
        return;
    }
    if (value < member->minimum || value > member->maximum) {
        constexpr int digits = 12; // of each number, without an exponent
        member->wrong = QStringLiteral("must be from %1 to %2")
                            .arg(member->minimum, 0, 'g', digits)
                            .arg(member->maximum, 0, 'g', digits);
    } else if (!member->isWhole) {
        *static_cast<double *>(member->value) = value;
    } else if (value == std::floor(value)) {
        *static_cast<int *>(member->value) = static_cast<int>(value);
    } else {
        member->wrong = QStringLiteral("must be a whole number");
    }
}

void FormFiller::text(const std::string &value)
{
    FormMember *const member = wanted(Kind::Text);
    if (member == nullptr) {
        return;
    }
    if (static_cast<double>(lengthOf(value)) > member->maximum) {
        member->wrong = QStringLiteral("is longer than %1 characters").arg(static_cast<int>(member->maximum));
        return;
    }
    *static_cast<QString *>(member->value) = QString::fromUtf8(value.data(), static_cast<int>(value.size()));
}

bool FormFiller::key(const std::string &name)
{
    if (m_skipped > 0) {
        return true;
    }
    m_member = m_levels.back().form->find(name);
    if (m_member == nullptr) {
        return true;
    }
    const bool isNew = !m_member->seen;
    m_member->seen = true;
    return isNew;
}

void FormFiller::beginObject()
{
    if (m_skipped == 0 && m_levels.empty()) {
        m_form.restart();
        m_levels.push_back({&m_form, nullptr});
    } else if (m_skipped == 0 && m_levels.back().list != nullptr) {
        beginEntry(*m_levels.back().list);
    } else {
        wanted(std::nullopt);
        ++m_skipped;
    }
}

void FormFiller::beginEntry(FormMember &list)
{
    if (!isWantedEntry(list)) {
        ++m_skipped;
        return;
    }
    list.entry->restart();
    m_levels.push_back({list.entry, nullptr});
}

void FormFiller::beginList()
{
    if (FormMember *const member = wanted(Kind::Objects)) {
        m_levels.push_back({nullptr, member});
    } else {
        ++m_skipped;
    }
}

void FormFiller::end()
{
    if (m_skipped > 0) {
        --m_skipped;
        return;
    }
    m_levels.pop_back();
    if (!m_levels.empty() && m_levels.back().list != nullptr) {
        finishEntry(*m_levels.back().list);
    }
}

void FormFiller::finishEntry(FormMember &list)
{
    list.wrongEntry = list.entry->error(nameOfEntry(list) + QLatin1Char('.'));
    if (!list.wrongEntry) {
        list.take();
    }
}

} // namespace tavro::assistantservice
