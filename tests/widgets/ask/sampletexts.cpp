#include "sampletexts.h"

namespace tavro::testsupport {

namespace {

const SampleTexts english{
    "en",
    "Play the harbour clip on layer 2 at half volume.",
    "The harbour clip now plays on layer 2 at 50 % volume.\nYou can say \"stop layer 2\" at any time. If the clip "
    "shall "
    "come back after the news block, tell me the program and the output, and I will put it there as well.",
    "What decides whether a clip plays without a gap?",
    "Three things decide whether a clip plays without a gap:\n\n1. The medium must be on a disk that is fast enough "
    "for "
    "all layers together. Two layers of uncompressed pictures need twice the rate of one.\n2. The layer must have its "
    "next item before the one that plays ends. The table beneath the stage shows it.\n3. The output must run at the "
    "clip's own rate, or at a multiple of it. At other rates pictures are left out or shown twice, which is seen in "
    "slow movements first.\n\nIf you tell me the program and the clip, I can look up what is set.",
    "A harbour at sunset, seen from the hills",
    "The service is busy. Please try again in a minute."};

const SampleTexts simplifiedChinese{
    "zh_CN",
    "在图层2上以一半音量播放海港片段。",
    "海港片段现在在图层2上以50%的音量播放。\n您可以随时说“停止图层2”。如果新闻之后还要再次播放这个片段，请告诉我节目和"
    "输出，我也会把它放到那里，并且保持同样的音量。",
    "片段能否无缝播放取决于什么？",
    "片段能否无缝播放取决于三点：\n\n1. "
    "素材所在的磁盘要足够快，能同时供应所有图层。两层无压缩画面需要一层两倍的速率。\n2. "
    "在正在播放的条目结束之前，图层必须已经得到下一条。舞台下方的表格会显示它。\n3. "
    "输出的帧率必须与片段相同，或者是它的整数倍。否则画面会被丢弃或重复，首先在缓慢的运动中看得出来。\n\n"
    "请告诉我节目和片段，我可以查看设置。",
    "从山上看日落时的海港",
    "服务繁忙，请一分钟后再试。"};

const SampleTexts traditionalChinese{
    "zh_TW",
    "在圖層2上以一半音量播放海港片段。",
    "海港片段現在在圖層2上以50%"
    "的音量播放。\n您可以隨時說「停止圖層2」。如果新聞之後還要再次播放這個片段，請告訴我節目和"
    "輸出，我也會把它放到那裡。",
    "片段能否無縫播放取決於什麼？",
    "片段能否無縫播放取決於三點：\n\n1. "
    "素材所在的磁碟要足夠快，能同時供應所有圖層。兩層無壓縮畫面需要一層兩倍的速率。\n2. "
    "在正在播放的項目結束之前，圖層必須已經得到下一項。舞台下方的表格會顯示它。\n3. "
    "輸出的影格率必須與片段相同，或者是它的整數倍。否則畫面會被丟棄或重複，首先在緩慢的運動中看得出來。\n\n"
    "請告訴我節目和片段，我可以查看設定。",
    "從山上看日落時的海港",
    "服務忙碌中，請一分鐘後再試。"};

const SampleTexts korean{
    "korean",
    "레이어 2에서 항구 클립을 절반 볼륨으로 재생해 줘.",
    "항구 클립이 지금 레이어 2에서 50% 볼륨으로 재생됩니다.\n언제든지 \"레이어 2 중지\"라고 말씀하세요. 뉴스 뒤에 다시 "
    "재생하려면 프로그램과 출력을 알려 주세요.",
    "클립이 끊김 없이 재생되려면 무엇이 필요한가요?",
    "클립이 끊김 없이 재생되려면 세 가지가 필요합니다.\n\n1. 미디어가 있는 디스크는 모든 레이어를 함께 공급할 만큼 "
    "빨라야 "
    "합니다. 압축하지 않은 두 레이어에는 두 배의 속도가 필요합니다.\n2. 재생 중인 항목이 끝나기 전에 레이어에 다음 "
    "항목이 "
    "있어야 합니다. 무대 아래의 표에 나타납니다.\n3. 출력은 클립과 같은 속도이거나 그 배수여야 합니다. 그렇지 않으면 "
    "화면이 빠지거나 두 번 나타납니다.\n\n프로그램과 클립을 알려 주시면 설정을 확인하겠습니다.",
    "언덕에서 바라본 해 질 녘의 항구",
    "서비스가 바쁩니다. 1분 뒤에 다시 시도해 주세요."};

const SampleTexts russian{
    "rus",
    "Запусти клип с гаванью на слое 2 с половинной громкостью.",
    "Клип с гаванью сейчас воспроизводится на слое 2 с громкостью 50 %.\nВ любой момент скажите «останови слой 2». "
    "Если "
    "клип нужен снова после новостей, назовите программу и выход.",
    "От чего зависит воспроизведение без разрыва?",
    "Воспроизведение без разрыва зависит от трёх вещей:\n\n1. Диск с материалом должен быть достаточно быстрым для "
    "всех "
    "слоёв сразу. Двум слоям несжатого изображения нужна двойная скорость.\n2. Следующий элемент должен быть у слоя до "
    "того, как закончится текущий. Это видно в таблице под сценой.\n3. Выход должен работать с частотой клипа или "
    "кратной ей. Иначе кадры пропускаются или повторяются, и это видно прежде всего в медленном движении.\n\nНазовите "
    "программу и клип, и я посмотрю, что настроено.",
    "Гавань на закате, вид с холмов",
    "Служба занята. Повторите попытку через минуту."};

} // namespace

const std::vector<SampleTexts> &sampleTexts()
{
    static const std::vector<SampleTexts> all{english, simplifiedChinese, traditionalChinese, korean, russian};
    return all;
}

} // namespace tavro::testsupport
