#include "grammar/folding.h"

#include <algorithm>
#include <iterator>

namespace tavro::assistantservice {

namespace {

// Traditional characters in code order, and beneath each its simplified form: common ones, not all.
constexpr char16_t traditional[] =
    u"並個們備傳僅億優儲兒內兩冊凍別剛劃劇動勝區協參員啟單嗎嚴囉國圍園圖團執報場塊墻壓壞夠夢奪奮婦媽孫"
    u"學實審寫寶將對導層屬岡島嶺幀幣幫幾庫廠廣張強彈後徑從復徹恆愛態慶憶應懷戰戲換擇擊據擴攝數斷時暢暫"
    u"曉書會東條極構樂樓標樣橋機檔檢權歡歲歷氣決沒沖淚減測湧溫滅滿漁漢潔濟濱灘灣為無煙熱燈燒爭爲爾牆獅"
    u"獨獲現環產畢畫異當療發盤眾睜確碼禮種稱積穩窮競筆節範築簡紀約紅純紙級細終組結給統絲經綠網緊緒線編"
    u"緩縣縮總繪繼續羅義習聖聞聯聲職聽脫腦臉臨臺與舊藍藝藥蘭處號蟲術衛裏裡製複規視親覽觀訂計訊記訪設許評"
    u"詞試詩話該誌語誤說誰課調談請論講謝證識譯護讀變讓貓貝財貨買資賓賣質購賽贈贏趕趙跡躍車軌軍軟較載輕"
    u"輪輸轉辦農這週進遊運過達遠適遲選還邊郵鄉釋針銀銷鋼錄錢錯鍵鎖鎮鏡鐘鐵長門閃閉開間閱關陰陸陽隊階際"
    u"隨隱雙雜雞離難雲電霧靈靚靜韓響頁項順預領頭頻顆題顏願類顧顯風飛飯餘館馬駕騎驗驚體鬧魚鮮鳥鴨鷹麗麥"
    u"麼黃點齊齒龍";
constexpr char16_t simplified[] =
    u"并个们备传仅亿优储儿内两册冻别刚划剧动胜区协参员启单吗严啰国围园图团执报场块墙压坏够梦夺奋妇妈孙"
    u"学实审写宝将对导层属冈岛岭帧币帮几库厂广张强弹后径从复彻恒爱态庆忆应怀战戏换择击据扩摄数断时畅暂"
    u"晓书会东条极构乐楼标样桥机档检权欢岁历气决没冲泪减测涌温灭满渔汉洁济滨滩湾为无烟热灯烧争为尔墙狮"
    u"独获现环产毕画异当疗发盘众睁确码礼种称积稳穷竞笔节范筑简纪约红纯纸级细终组结给统丝经绿网紧绪线编"
    u"缓县缩总绘继续罗义习圣闻联声职听脱脑脸临台与旧蓝艺药兰处号虫术卫里里制复规视亲览观订计讯记访设许评"
    u"词试诗话该志语误说谁课调谈请论讲谢证识译护读变让猫贝财货买资宾卖质购赛赠赢赶赵迹跃车轨军软较载轻"
    u"轮输转办农这周进游运过达远适迟选还边邮乡释针银销钢录钱错键锁镇镜钟铁长门闪闭开间阅关阴陆阳队阶际"
    u"随隐双杂鸡离难云电雾灵靓静韩响页项顺预领头频颗题颜愿类顾显风飞饭余馆马驾骑验惊体闹鱼鲜鸟鸭鹰丽麦"
    u"么黄点齐齿龙";
static_assert(std::size(traditional) == std::size(simplified), "each character needs its simplified form");

const char16_t *findTraditional(char16_t c)
{
    const char16_t *end = std::end(traditional) - 1;
    const char16_t *found = std::lower_bound(std::begin(traditional), end, c);
    return found != end && *found == c ? found : nullptr;
}

char16_t halfWidth(char16_t c)
{
    return c >= 0xFF01 && c <= 0xFF5E ? static_cast<char16_t>(c - 0xFEE0) : c;
}

} // namespace

bool isTraditional(QChar c)
{
    return findTraditional(c.unicode()) != nullptr;
}

bool isHan(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= 0x4E00 && code <= 0x9FFF) || (code >= 0x3400 && code <= 0x4DBF) || code == 0x3007;
}

QChar folded(QChar c)
{
    const char16_t code = c.unicode();
    if (code < 0x80) {
        return QChar(code >= 'A' && code <= 'Z' ? static_cast<char16_t>(code + 32) : code);
    }
    if (isHan(c)) {
        const char16_t *found = findTraditional(code);
        return found ? QChar(simplified[found - traditional]) : c;
    }
    constexpr char16_t yo = 0x0451;
    constexpr char16_t ye = 0x0435;
    const QChar lower = QChar(halfWidth(code)).toCaseFolded();
    return lower.unicode() == yo ? QChar(ye) : lower;
}

} // namespace tavro::assistantservice
