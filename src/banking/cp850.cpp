#include "norma43.h"

namespace tallora::banking {

QString decodeCp850(const QByteArray& bytes) {
    // The upper half of code page 850, 0x80 to 0xFF.
    static const char16_t upper[128] = {
        u'Ç', u'ü', u'é', u'â', u'ä', u'à', u'å', u'ç', u'ê',      u'ë', u'è',     u'ï', u'î',
        u'ì', u'Ä', u'Å', u'É', u'æ', u'Æ', u'ô', u'ö', u'ò',      u'û', u'ù',     u'ÿ', u'Ö',
        u'Ü', u'ø', u'£', u'Ø', u'×', u'ƒ', u'á', u'í', u'ó',      u'ú', u'ñ',     u'Ñ', u'ª',
        u'º', u'¿', u'®', u'¬', u'½', u'¼', u'¡', u'«', u'»',      u'░', u'▒',     u'▓', u'│',
        u'┤', u'Á', u'Â', u'À', u'©', u'╣', u'║', u'╗', u'╝',      u'¢', u'¥',     u'┐', u'└',
        u'┴', u'┬', u'├', u'─', u'┼', u'ã', u'Ã', u'╚', u'╔',      u'╩', u'╦',     u'╠', u'═',
        u'╬', u'¤', u'ð', u'Ð', u'Ê', u'Ë', u'È', u'ı', u'Í',      u'Î', u'Ï',     u'┘', u'┌',
        u'█', u'▄', u'¦', u'Ì', u'▀', u'Ó', u'ß', u'Ô', u'Ò',      u'õ', u'Õ',     u'µ', u'þ',
        u'Þ', u'Ú', u'Û', u'Ù', u'ý', u'Ý', u'¯', u'´', u'\u00AD', u'±', u'‗',     u'¾', u'¶',
        u'§', u'÷', u'¸', u'°', u'¨', u'·', u'¹', u'³', u'²',      u'■', u'\u00A0'};
    QString out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        out += b < 0x80 ? QChar(b) : QChar(upper[b - 0x80]);
    }
    return out;
}

}  // namespace tallora::banking
