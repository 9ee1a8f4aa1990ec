#include "languagefile.h"

#include <QXmlStreamReader>

namespace tavro::trans {

namespace {

class Reader {
public:
    explicit Reader(QIODevice &device)
        : m_xml(&device)
    { }

    std::optional<LanguageFile> read(LanguageFileError &error)
    {
        if (m_xml.readNextStartElement())
            readDocument();
        readToEnd();
        if (!m_xml.hasError())
            return m_file;
        error = {m_xml.lineNumber(), m_xml.errorString()};
        return std::nullopt;
    }

private:
    void readDocument();
    void readContext();
    void readMessage(Texts &texts);
    void readTranslation(QString &text, bool &usable);
    QString readText(int variantLevels = 2);
    QChar readByte();

    // What stands behind the document element must be well-formed too.
    void readToEnd()
    {
        while (!m_xml.atEnd())
            m_xml.readNext();
    }

    QXmlStreamReader m_xml;
    LanguageFile m_file;
};

void Reader::readDocument()
{
    m_file.language = m_xml.attributes().value(QLatin1String("language")).toString();
    if (m_xml.name() != QLatin1String("TS"))
        m_xml.raiseError(QStringLiteral("not a TS document"));
    else if (!m_xml.attributes().value(QLatin1String("version")).startsWith(QLatin1String("2.")))
        m_xml.raiseError(QStringLiteral("not a TS document of version 2"));
    else if (m_file.language.isEmpty())
        m_xml.raiseError(QStringLiteral("no language named"));
    while (m_xml.readNextStartElement()) {
        if (m_xml.name() == QLatin1String("context"))
            readContext();
        else
            m_xml.skipCurrentElement();
    }
}

void Reader::readContext()
{
    std::string name;
    Texts texts;
    while (m_xml.readNextStartElement()) {
        if (m_xml.name() == QLatin1String("name"))
            name = readText().toStdString();
        else if (m_xml.name() == QLatin1String("message"))
            readMessage(texts);
        else
            m_xml.skipCurrentElement();
    }
    // The name may stand behind the messages, and a context may stand in a file twice.
    for (auto &[key, text] : texts)
        m_file.contexts[name][key] = text;
}

void Reader::readMessage(Texts &texts)
{
    std::string key;
    QString text;
    bool usable = false;
    while (m_xml.readNextStartElement()) {
        if (m_xml.name() == QLatin1String("source"))
            key = readText().toStdString();
        else if (m_xml.name() == QLatin1String("translation"))
            readTranslation(text, usable);
        else
            m_xml.skipCurrentElement();
    }
    if (usable && !key.empty() && !text.isEmpty())
        texts[key] = text;
}

void Reader::readTranslation(QString &text, bool &usable)
{
    const QString type = m_xml.attributes().value(QLatin1String("type")).toString();
    usable = type != QLatin1String("obsolete") && type != QLatin1String("vanished");
    text = readText();
}

// The text of the current element. Of its variants (lengths within plural forms) the first one that has a text counts.
QString Reader::readText(int variantLevels)
{
    QString text;
    QString variant;
    while (!m_xml.atEnd()) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::Characters:
            text += m_xml.text();
            break;
        case QXmlStreamReader::StartElement:
            if (m_xml.name() == QLatin1String("byte"))
                text += readByte();
            else if (variant.isEmpty() && variantLevels > 0)
                variant = readText(variantLevels - 1);
            else
                m_xml.skipCurrentElement();
            break;
        case QXmlStreamReader::EndElement:
            return variant.isEmpty() ? text : variant;
        default:
            break;
        }
    }
    return QString();
}

// Characters that XML cannot hold are written as <byte value="x1b"/> or, decimal, <byte value="27"/>.
QChar Reader::readByte()
{
    const QString value = m_xml.attributes().value(QLatin1String("value")).toString();
    const bool isHex = value.startsWith(QLatin1Char('x'));
    bool isNumber = false;
    const ushort code = isHex ? value.midRef(1).toUShort(&isNumber, 16) : value.toUShort(&isNumber);
    m_xml.skipCurrentElement();
    if (!isNumber)
        m_xml.raiseError(QStringLiteral("a byte without a number"));
    return QChar(code);
}

} // namespace

std::optional<LanguageFile> readLanguageFile(QIODevice &device, LanguageFileError &error)
{
    return Reader(device).read(error);
}

} // namespace tavro::trans
