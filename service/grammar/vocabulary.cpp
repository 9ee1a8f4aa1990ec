#include "grammar/vocabulary.h"

namespace tavro::assistantservice {

// Chinese stands in simplified form; sentences are folded to it before they are compared.
const Vocabulary &Vocabulary::instance()
{
    static const Vocabulary vocabulary{
        WordList(
            u"play|replay|play back|playback|播放|播出|放映|重播|播一下|播|воспроизвед*|воспроизвод*|воспроизвести|"
            u"проигра*|"
            u"играй|сыграй|재생*|틀어*"),
        WordList(u"show|start|run|put|load|open|display|bring up|switch to|change "
                 u"to|cue|roll|take|add|显示|展示|放置|放到|放在|放上|放进|放|"
                 u"切到|切换到|打开|启动|покажи*|показать|запусти*|запускай|включи*|включай|поставь*|보여*|띄워*|시작*|"
                 u"올려*"),
        WordList(
            u"stop|halt|clear|take off|remove|end|turn off|switch off|停止播放|停止|停播|停掉|停下|停|关闭|关掉|清除|"
            u"清空|结束|останови*|останавливай*|стоп|выключи*|выключай|прекрати*|убери|재생 중지*|재생 정지*|재생을 "
            u"중지*|재생을 "
            u"멈*|정지*|중지*|멈춰*|멈추*|꺼*|끄*"),
        WordList(u"stop|halt|停止播放|停止|停播|停掉|停下|停|останови*|останавливай*|стоп|정지*|중지*|멈춰*|멈추*"),
        WordList(u"pause|resume|rewind|loop|looped|looping|repeat|暂停|继续播放|循环播放|循环|пауза|приостанови*|"
                 u"일시정지*|일시*"),
        WordList(u"set|change|switch|adjust|turn|make|put|bring|fade|lower|raise|reduce|increase|turn down|turn "
                 u"up|设置为|设置成|"
                 u"设为|设成|设置|设定|设|调整|调节|调到|调成|调为|调|改为|改成|改|换成|换为|降到|升到|установи*|"
                 u"поставь*|сделай*|"
                 u"измени*|поменяй*|설정*|맞춰*|조절*|바꿔*|해줘"),
        WordList(
            u"louder|quieter|softer|up|down|higher|increase|decrease|lower|raise|reduce|调高|调低|调大|调小|提高|降低|"
            u"大声|小声|大一点|小一点|大点|小点|增加|减少|громче|тише|прибавь|убавь|увеличь|уменьши|повысь|понизь|"
            u"снизь|크게|작게|높여*|낮춰*|올려*|내려*|키워*|줄여*"),
        WordList(u"increase|decrease|lower|raise|reduce|调高|调低|调大|调小|提高|降低|增加|减少|прибавь|убавь|увеличь|"
                 u"уменьши|повысь|понизь|снизь|높여*|낮춰*|올려*|내려*|키워*|줄여*"),
        WordList(u"mute|silence|静音|заглуши*|음소거*"),
        WordList(u"unmute|un mute|cancel mute|cancel the mute|undo mute|undo the mute|取消静音|解除静音|음소거 해제*"),
        WordList(u"cancel|undo|take off|取消|解除|解开|отмени*|해제*"),
        WordList(u"volume|volumes|loudness|sound level|sound|audio "
                 u"level|audio|音量|声音|音频|громкост*|звук*|볼륨*|음량*|소리*"),
        WordList(u"layer|layers|图层|层|слой|слое|слоя|слою|слои|слоев|слоях|레이어*"),
        WordList(u"program|programs|programme|programmes|节目|программ*|프로그램*"),
        WordList(u"output|outputs|输出通道|输出口|输出端|输出|выход*|вывод*|출력*"),
        WordList(u"number|no|nr|#|号|编号|номер|번"),
        WordList(u"all|every|everything|all of them|全部|所有|一切|все|всё|모두|모든|전부|전체"),
        WordList(u"%|percent|percents|per cent|pct|процент*|퍼센트*|프로"),
        WordList(u"half|a half|half the|half of the|一半|半|половин*|вполовину|절반*|반"),
        WordList(u"quarter|a quarter|四分之一"),
        WordList(u"full|max|maximum|maximal|the loudest|满|最大|максим*|полн*|최대*"),
        WordList(u"no|zero|without|without any|silently|silent|minimum|min|最小|没有|无|без|최소*"),
        WordList(
            u"dont|do "
            u"not|never|not|doesnt|不要|不|别|不用|请勿|勿|не|никогда|하지|말고|말아*|마세요|마십시오|마라|마|않*"),
        WordList(u"how|what|why|who|when|where|which|whose|whats|explain|tell|describe|is|are|does|did|was|write|什么|"
                 u"怎么|怎样|为什么|如何|谁|哪些|哪里|多少|为何|在播放吗|在播吗|播放了吗|播了吗|停了吗|停止了吗|是否|"
                 u"是不是|有没有|что|как|почему|кто|когда|где|зачем|сколько|"
                 u"расскажи*|объясни*|무엇*|뭐*|왜|어떻게|누가|누구*|언제|어디*|중이야|중인가*|중입니까"),
        WordList(
            u"please|can|could|would|will|you|i|we|want|wanna|like|need|to|id|lets|let|us|me|now|then|and|also|hey|hi|"
            u"hello|ok|okay|just|kindly|go|ahead|next|first|so|assistant|for|thanks|thank|my|have|it|ill|"
            u"请|先|帮我|帮忙|帮|给我|给|我想要|我想|我要|想|能不能|能否|可以|能|麻烦|现在|然后|再|并且|并|接着|同时|"
            u"你|"
            u"您|我|"
            u"пожалуйста|можешь|можете|мне|теперь|потом|затем|и|а|хочу|지금|그리고|제발"),
        WordList(
            u"and then|and also|and|then|plus|as well as|然后再|然后|并且|并|接着|同时|以及|再|和|与|и затем|и|а|затем|"
            u"потом|그리고|과|와"),
        WordList(u"on|onto|to|in|into|at|of|for|from|with|over|using|the|a|an|via|through|在|于|从|以|用|的|对|в|во|на|"
                 u"с|со|из|для|по|до|к"),
        WordList(
            u"on|onto|to|in|into|at|of|for|from|with|over|as|using|the|a|an|via|through|在|到|于|从|至|以|用|为|成|的|"
            u"给|将|把|对|в|во|на|с|со|из|для|по|до|к"),
        WordList(u"上面|里面|当中|上|中|里|的|处|에서|에|의|으로|로|를|을|은|는|이|가|만|도|까지"),
        WordList(
            u"the|a|an|my|our|this|that|these|those|some|clip|clips|video|videos|picture|image|photo|file|movie|film|"
            u"still|animation|media|item|called|named|titled|name|please|now|again|for|me|us|of|from|library|thanks|"
            u"thank|you|to|in|with|at|on|and|up|back|one|is|as|it|instead|immediately|at once|right now|right away|"
            u"的|这个|那个|这张|那张|这段|那段|一个|一张|一段|视频|图片|片段|素材|文件|影片|媒体|叫做|叫|名为|名叫|"
            u"一下|吧|马上|立刻|立即|"
            u"请|了|呢|吗|啊|给我|给|我|在|上|中|里|到|去|把|将|用|以|并|和|个|张|段|库|从|出来|出|谢谢|好|就|要|它|"
            u"пожалуйста|клип|видео|ролик|файл|картинк*|из|в|на|с|и|снова|сейчас|сразу|немедленно|이|그|영상|클립|"
            u"동영상|파일|사진|을|를|에|"
            u"에서|"
            u"해줘|해|주세요|좀|지금|바로|당장|이라는|라는|줘|으로|로"),
        WordList(u"it|this|that|them|this one|that one|something|它|这个|那个|这|那|его|ее|это|그것*|이것*"),
        WordList(
            u"generated|generate|drawn|drew|created|made|painted|new|latest|last|just|you|ai|that|this|刚才|刚刚|刚|"
            u"生成|画好|画出|画|最新|最后|新|你|所|сгенерированн*|созданн*|нарисованн*|новую|последн*|생성*|방금|만든|"
            u"그린|새|마지막"),
        WordList(
            u"picture|image|photo|drawing|painting|artwork|图片|图像|图画|照片|画面|画|图|картинк*|изображени*|рисун*|"
            u"그림*|이미지*|사진*"),
        WordList(u"yes|yeah|yep|sure|right|correct|exactly|是的|是|对的|对|好的|好|嗯|没错|да|верно|네|예|응|맞아*"),
        WordList(u"last|latter|最后|последн*|마지막*"),
        WordList(u"playing|what|whatever|running|playback|play|currently|playout|播放|正在|играе*|играющ*|"
                 u"воспроизведен*|재생*"),
        WordList(
            u"seconds|secs|minutes|minute|hours|hour|oclock|am|pm|tomorrow|tonight|later|after|before|until|till|if|"
            u"unless|once|while|when|whenever|as soon as|秒|分钟|小时|点钟|明天|今晚|稍后|之后|以后|后|之前|以前|直到|"
            u"如果|等到|的时候|секунд*|минут*|час|часа|часов|завтра|позже|после|если|когда|пока|через|초|분|시간|"
            u"후|후에|뒤에|나중에|내일|만약"),
    };
    return vocabulary;
}

} // namespace tavro::assistantservice
