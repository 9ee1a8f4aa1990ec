#include "openai/wishwords.h"

namespace tavro::assistantservice {

// Chinese stands in simplified form; sentences are folded to it before they are compared.
const WishWords &WishWords::instance()
{
    static const WishWords words{
        WordList(
            u"plays|playing|played|air|on air|broadcast|bring back|get back|want to see|want to watch|want to hear|"
            u"lets see|lets have|lets watch|swap|replace|switch|go to|go back to|back to|cut to|jump to|fade to|"
            u"launch|trigger|restart|again|next one|next clip|next item|another one|another clip|watch|"
            u"上播|上|播送|直播|投放|投到|替换|换成|换|来个|来点|看|听|用|重来|再来|下一个|随机|"
            u"вывед*|вывод*|давай|дай|верни|замени*|смени*|переключи*|крути|крутить|крутани|посмотр*|послуша*|"
            u"хочу|следующ*|снова|еще|начни*|начина*|воспроизведен*|"
            u"틀*|켜*|바꾸*|바꿔*|교체*|내보내*|송출*|방송*|보자|들려*|다시"),
        WordList(
            u"stops|stopped|stopping|kill|cut the|cut it|cut layer|go black|to black|black out|blackout|off|shut|"
            u"shut down|quit|cease|hide|drop|abort|terminate|kick|take down|take everything|take all|"
            u"everything down|taking off|enough|no more|swap|replace|switch|cancel|pause|silence|"
            u"停止|停|关|撤|撤下|下掉|拿掉|去掉|移除|切掉|黑屏|中断|终止|取消|退出|别放|不要放|替换|换成|换|够了|"
            u"стоп|остан*|убери*|убрать|уберите|сними|снимите|снять|сотри*|гаси|погаси*|отключи*|отмени*|"
            u"закрой*|закончи*|заверши*|хватит|довольно|замени*|смени*|пауз*|"
            u"멈추*|멈춰*|그만*|중단*|끝내*|내려*|빼|빼줘*|빼고|지워*|비워*|닫아*|취소*|없애*|치워*|바꾸*|바꿔*|교체*"),
        WordList(u"loud|louder|loudly|quiet|quietly|soft|softly|noise|noisy|gain|level|levels|db|decibel|decibels|"
                 u"half|mute|muted|muting|unmuted|silent|fade|duck|"
                 u"响|响一点|吵|太吵|太大|太小|轻|轻一点|大|小|声|静|一半|最大|"
                 u"громк*|тих*|тише|потише|погромче|шум*|слышн*|звук*|половин*|максимум|минимум|"
                 u"시끄*|조용*|크게|커|커요|작게|작아*|키우*|줄이*|낮추*|높이*|절반|음소거*|최대*"),
        WordList(u"whole|entire|both|each|any|anything|completely|total|totally|整个|都|全|整|统统|весь|вся|всех|всем|"
                 u"всеми|целиком|полностью|оба|обе|каждый|каждом|다|싹|전체*|모두*|모든*|전부*"),
        WordList(u"how about|what about|why not|why dont|too|怎么样|好不好|好吗|行吗|可以吗|как насчет|почему бы|어때*|"
                 u"어떨까*"),
        WordList(
            u"no|nope|nah|none|neither|nothing|never mind|nevermind|forget it|forget|не надо|нет|ничего|забудь*|не|"
            u"не нужно|不|不用|不要|没有|没|算了|不必|아니*|아뇨|됐*|괜찮*|취소*|없*"),
        WordList(u"ok|okay|yes|yup|do it|do that|do so|go|go ahead|please do|alright|all right|fine|agreed|confirm|"
                 u"confirmed|可以|行|好|好啊|确认|没问题|давай*|хорошо|ладно|конечно|делай*|сделай*|подтвержда*|"
                 u"좋아*|그래*|그렇게|해줘*|확인*|네*|예"),
        WordList(
            u"关于|关系|有关|相关|无关|停车|停留|使用|用户|作用|应用|有用|上次|上面|上午|晚上|早上|以上|网上|大家|大海|"
            u"大概|大约|大小|小时|小说|声明|安静|看法|听说"),
    };
    return words;
}

} // namespace tavro::assistantservice
