#include "grammartable.h"

#include <QtTest>

using namespace grammartable;

namespace {

QVector<MediaItem> library()
{
    return libraryOf({
        "A",
        "Black",
        "3 Tigers.mp4",
        "海港夜景.mp4",
        "海港日出.mp4",
        "雪山",
        "停车场.mp4",
        "播放器演示.mp4",
        "第二层.mov",
        "開場 01.mov",
        "台北101.mp4",
        "서울의 밤.mp4",
        "부산 바다.mov",
        "Ночной город.mp4",
        "Москва.mov",
        "Новости 1.mp4",
        "Новости 2.mp4",
    });
}

void check()
{
    grammartable::check(library());
}

} // namespace

class ServiceTonguesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void chinese_data();
    void chinese() { check(); }
    void chineseTraditional_data();
    void chineseTraditional() { check(); }
    void korean_data();
    void korean() { check(); }
    void russian_data();
    void russian() { check(); }
};

void ServiceTonguesTest::chinese_data()
{
    columns();
    row("停车场放到第二层", "0 bPlay=true layerId=2 mediaId=停车场.mp4");
    row("把停车场放到第二层", "0 bPlay=true layerId=2 mediaId=停车场.mp4");
    row("播放器演示放第一层", "0 bPlay=true layerId=1 mediaId=播放器演示.mp4");
    row("播放第二层到第三层", "0 bPlay=true layerId=3 mediaId=第二层.mov");
    row("播放第二层", "", "要播放什么？请说出媒体库中素材的名称。");
    row("播放A到第二层", "0 bPlay=true layerId=2 mediaId=A");
    row("把海港夜景放在图层3上", "0 bPlay=true layerId=3 mediaId=海港夜景.mp4");
    row("把第二层换成雪山", "0 bPlay=true layerId=2 mediaId=雪山");
    row("在第一和第二层播放雪山", "0 bPlay=true layerId=1 mediaId=雪山; 0 bPlay=true layerId=2 mediaId=雪山");
    row("停止第2、3层", "1001 bPlay=false layerId=2; 1001 bPlay=false layerId=3");
    row("停止第二和第三层", "1001 bPlay=false layerId=2; 1001 bPlay=false layerId=3");
    row("第一层播放海港夜景，第二层播放雪山，第三层播放Black",
        "0 bPlay=true layerId=1 mediaId=海港夜景.mp4; 0 bPlay=true layerId=2 mediaId=雪山; 0 bPlay=true layerId=3 "
        "mediaId=Black");
    row("第一层音量30%，第二层音量60%", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("第一层音量调到30%，第二层调到60%", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("停止除了第二层以外的所有层", "", "我不明白其中的“除外”。");
    row("除第二层外全部停止", "", "我不明白其中的“除外”。");
    row("不停止第二层", "", "好的，");
    row("先别播放雪山", "", "好的，");
    row("取消第二层静音", "", "要设为多大音量？请用百分比说明，");
    row("关掉第二层的静音", "", "要设为多大音量？请用百分比说明，");
    row("第二层声音大一点", "", "我不知道当前的音量。");
    row("第二层音量降低百分之十", "", "我不知道当前的音量。");
    row("第二层音量降到百分之十", "1002 layerId=2 volume=0.1");
    row("音量一百二", "", "音量范围是 0 到 100%，");
    row("播放雪山，七成五音量", "", "媒体库中没有找到“雪山五”。");
    row("播放雪山，音量三分之一", "", "媒体库中没有找到“雪山分之一”。");
    row("播放雪山，五秒后停止", "", "我只能立即执行，");
    row("五分钟后播放雪山", "", "我只能立即执行，");
    row("如果第一层空了，就播放雪山", "", "我只能立即执行，");
    row("播放雪山30秒", "", "我只能立即执行，");
    row("在1到3层播放雪山", "", "媒体库中没有找到“1到雪山”。");
    row("停止1到3层", "", "我不明白其中的“1”。");
    row("雪山在播放吗", "", "此助手没有配置语言模型");
    row("能播放雪山吗", "0 bPlay=true mediaId=雪山");
    row("播放海港夜景或雪山", "", "媒体库中没有找到“海港夜景或雪山”。");
    row("播放五", "", "媒体库中没有找到“五”。");
    row("在第１层播放雪山，音量５０％", "0 bPlay=true layerId=1 mediaId=雪山 volume=0.5");
}

void ServiceTonguesTest::chineseTraditional_data()
{
    columns();
    row("播放臺北101到第二層", "0 bPlay=true layerId=2 mediaId=台北101.mp4");
    row("播放开场1", "0 bPlay=true mediaId=開場 01.mov");
    row("停止除了第二層以外的所有圖層", "", "我不明白其中的「除外」。");
    row("第二層聲音小一點", "", "我不知道目前的音量。");
    row("關掉第二層的靜音", "", "要設為多大音量？請用百分比說明，");
    row("雪山在播放嗎", "", "此助手沒有設定語言模型");
    row("五分鐘後播放雪山", "", "我只能立即執行，");
    row("不要停止第二層", "", "好的，");
    row("停止第一和第二層", "1001 bPlay=false layerId=1; 1001 bPlay=false layerId=2");
}

void ServiceTonguesTest::korean_data()
{
    columns();
    row("서울의 밤을 재생해줘", "0 bPlay=true mediaId=서울의 밤.mp4");
    row("2번 레이어에 서울의 밤을 볼륨 50%로 재생해줘", "0 bPlay=true layerId=2 mediaId=서울의 밤.mp4 volume=0.5");
    row("부산 바다를 1번 레이어에 올려줘", "0 bPlay=true layerId=1 mediaId=부산 바다.mov");
    row("레이어 2번 꺼줘", "1001 bPlay=false layerId=2");
    row("레이어 2 볼륨 오십 퍼센트로", "1002 layerId=2 volume=0.5");
    row("레이어 2 빼고 모두 정지", "", "이 요청에서 \"빼고\" 부분을 이해하지 못했습니다.");
    row("레이어 2를 정지하지 마", "", "알겠습니다.");
    row("레이어 2 음소거를 꺼줘", "", "이 요청에서 \"꺼줘\" 부분을 이해하지 못했습니다.");
    row("10초 후에 레이어 2 정지", "", "바로 실행할 수만 있고, 시간이나 조건에 맞춰 실행할 수는 없습니다.");
    row("5분 후에 부산 바다 재생해줘", "", "바로 실행할 수만 있고, 시간이나 조건에 맞춰 실행할 수는 없습니다.");
    row("서울의 밤 재생 중이야?", "", "이 도우미에는 언어 모델이");
    row("레이어 2 볼륨을 10% 낮춰줘", "", "현재 볼륨을 알 수 없습니다.");
    row("레이어 2 볼륨을 10%로 낮춰줘", "1002 layerId=2 volume=0.1");
    row("레이어 0 정지", "", "레이어 번호는 1부터 시작합니다.");
    row("레이어 2 볼륨 백이십 퍼센트", "", "볼륨은 0에서 100%까지입니다.");
}

void ServiceTonguesTest::russian_data()
{
    columns();
    row("останови второй и третий слои", "1001 bPlay=false layerId=2; 1001 bPlay=false layerId=3");
    row("останови всё, кроме слоя 2", "", "Мне непонятно здесь «кроме».");
    row("останови все слои кроме 2", "", "Мне непонятно здесь «кроме 2».");
    row("останови слои с 1 по 3", "", "Мне непонятно здесь «1 3».");
    row("останови слой 2 через 10 секунд", "", "Я действую только сразу, а не по времени или условию.");
    row("если слой 1 пуст, включи ночной город", "", "Я действую только сразу, а не по времени или условию.");
    row("не включай ночной город", "", "Хорошо, я ничего не меняю.");
    row("не останавливай слой 2", "", "Хорошо, я ничего не меняю.");
    row("воспроизведи ночной город на слое 1, а Москва на слое 2",
        "0 bPlay=true layerId=1 mediaId=Ночной город.mp4; 0 bPlay=true layerId=2 mediaId=Москва.mov");
    row("слой 1 30%, слой 2 60%", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("поменяй громкость слоя 2 с 50% на 30%", "1002 layerId=2 volume=0.3");
    row("убавь громкость слоя 2 на 10%", "", "Текущая громкость мне неизвестна.");
    row("убавь громкость слоя 2 до 10%", "1002 layerId=2 volume=0.1");
    row("громкость слоя 2 сто двадцать процентов", "", "Громкость может быть от 0 до 100 %;");
    row("включи звук на слое 2", "", "Какую громкость установить?");
    row("заглуши слой 2", "1002 layerId=2 volume=0");
    row("выключи слой 2", "1001 bPlay=false layerId=2");
    row("играет ли ночной город?", "", "не настроена языковая модель");
}

QTEST_GUILESS_MAIN(ServiceTonguesTest)
#include "tst_servicetongues.moc"
