#include "grammartable.h"

#include <QtTest>

using namespace grammartable;

namespace {

// Names that hold verbs, places, numbers and fillers.
QVector<MediaItem> library()
{
    return libraryOf({
        "A",
        "7",
        "Harbour.mp4",
        "Harbour Night.mp4",
        "Sunset_Beach.mov",
        "Opener v2.1.mov",
        "Opener v2.2.mov",
        "Opener.mov",
        "News Intro 01.mxf",
        "News Intro 02.mxf",
        "Stop Motion Cats.mp4",
        "Play of Colours.mov",
        "Layer Cake.mp4",
        "Layer 3.mov",
        "Volume 2.mov",
        "It.mp4",
        "Don't Stop.mp3",
        "50 Percent.mov",
        "Mute.wav",
        "IMG_0042.JPG",
        "3 Tigers.mp4",
        "Two and a Half.mp4",
        "Black",
        "End Credits.mov",
        "Fade to Black.mp4",
        "Count Down 10-1.mp4",
        "Weather 4K 50p.mov",
        "Q&A session.mp4",
    });
}

void check()
{
    grammartable::check(library());
}

} // namespace

class ServiceSentencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesThatReadLikeSomethingElse_data();
    void namesThatReadLikeSomethingElse() { check(); }
    void everyPartIsCarriedOutOrNone_data();
    void everyPartIsCarriedOutOrNone() { check(); }
    void saysWhatItDoesNotUnderstand_data();
    void saysWhatItDoesNotUnderstand() { check(); }
    void actsAtOnceOnly_data();
    void actsAtOnceOnly() { check(); }
    void leavesAloneWhatIsNoRequest_data();
    void leavesAloneWhatIsNoRequest() { check(); }
    void asksForTheVolume_data();
    void asksForTheVolume() { check(); }
    void asksForTheLayer_data();
    void asksForTheLayer() { check(); }
    void asksForTheItem_data();
    void asksForTheItem() { check(); }
    void sendsNoFloodOfCommands();
};

void ServiceSentencesTest::namesThatReadLikeSomethingElse_data()
{
    columns();
    row("play a on layer 1", "0 bPlay=true layerId=1 mediaId=A");
    row("play A on layer 2", "0 bPlay=true layerId=2 mediaId=A");
    row("play a", "0 bPlay=true mediaId=A");
    row("play a harbour on layer 1", "0 bPlay=true layerId=1 mediaId=Harbour.mp4");
    row("play 7 on layer 2", "0 bPlay=true layerId=2 mediaId=7");
    row("play 3 tigers on layer 3", "0 bPlay=true layerId=3 mediaId=3 Tigers.mp4");
    row("play two and a half at half volume on layer 2",
        "0 bPlay=true layerId=2 mediaId=Two and a Half.mp4 volume=0.5");
    row("play stop motion cats on layer 2", "0 bPlay=true layerId=2 mediaId=Stop Motion Cats.mp4");
    row("stop motion cats on layer 2", "0 bPlay=true layerId=2 mediaId=Stop Motion Cats.mp4");
    row("play of colours on layer 1", "0 bPlay=true layerId=1 mediaId=Play of Colours.mov");
    row("play layer cake on layer 2", "0 bPlay=true layerId=2 mediaId=Layer Cake.mp4");
    row("play layer 3 on layer 1", "0 bPlay=true layerId=1 mediaId=Layer 3.mov");
    row("play volume 2 on layer 2", "0 bPlay=true layerId=2 mediaId=Volume 2.mov");
    row("play 50 percent on layer 1", "0 bPlay=true layerId=1 mediaId=50 Percent.mov");
    row("play mute on layer 4", "0 bPlay=true layerId=4 mediaId=Mute.wav");
    row("play don't stop on layer 2", "0 bPlay=true layerId=2 mediaId=Don't Stop.mp3");
    row("end credits on layer 2", "0 bPlay=true layerId=2 mediaId=End Credits.mov");
    row("play weather 4k 50p on layer 2", "0 bPlay=true layerId=2 mediaId=Weather 4K 50p.mov");
    row("play q and a session", "0 bPlay=true mediaId=Q&A session.mp4");
    row("play opener v2.1", "0 bPlay=true mediaId=Opener v2.1.mov");
    row("play opener", "0 bPlay=true mediaId=Opener.mov");
    row("play count down 10-1", "0 bPlay=true mediaId=Count Down 10-1.mp4");
    row("play img 42", "0 bPlay=true mediaId=IMG_0042.JPG");
    row("play layer 3", "", "What shall I play?");
    row("play it on layer 3", "", "What shall I play?");
    row("play it", "", "What shall I play?");
    row("fade layer 2", "", "No language model");
    row("volume down on layer 2", "", "I do not know the present volume.");
    row("fade to black", "", "No language model");
    row("play weather 4k 50p on layer 2 at 50", "", "I found nothing named \"weather 4k 50p at 50\"");
    row("layer 2 at 50", "", "No language model");
    row("set layer 2 to 3 tigers", "0 bPlay=true layerId=2 mediaId=3 Tigers.mp4");
    row("set layer 2 to 1/2", "", "I do not understand \"1 2\"");
}

void ServiceSentencesTest::everyPartIsCarriedOutOrNone_data()
{
    columns();
    row("play harbour on layer 1, sunset beach on layer 2 and black on layer 3",
        "0 bPlay=true layerId=1 mediaId=Harbour.mp4; 0 bPlay=true layerId=2 mediaId=Sunset_Beach.mov; 0 bPlay=true "
        "layerId=3 mediaId=Black");
    row("set layer 1 to 30% and layer 2 to 60%", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("set layer 1 to 30 and layer 2 to 60", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("layer 1 30%, layer 2 60%", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.6");
    row("set layers 1 and 2 to 30", "1002 layerId=1 volume=0.3; 1002 layerId=2 volume=0.3");
    row("stop the second and third layer", "1001 bPlay=false layerId=2; 1001 bPlay=false layerId=3");
    row("stop layer 2 of program 1 and layer 3 of program 2",
        "1001 bPlay=false layerId=2 programId=1; 1001 bPlay=false layerId=3 programId=2");
    row("stop layer 2 on programs 1 and 2",
        "1001 bPlay=false layerId=2 programId=1; 1001 bPlay=false layerId=2 programId=2");
    row("take layer 2 off", "1001 bPlay=false layerId=2");
    row("turn layers 1 and 2 off", "1001 bPlay=false layerId=1; 1001 bPlay=false layerId=2");
    row("take harbour off layer 2", "1001 bPlay=false layerId=2");
    row("stop the clip that is playing on layer 2", "1001 bPlay=false layerId=2");
    row("stop playing on layer 2", "1001 bPlay=false layerId=2");
    row("switch layer 2 to harbour", "0 bPlay=true layerId=2 mediaId=Harbour.mp4");
    row("harbour, layer 2, 50%", "0 bPlay=true layerId=2 mediaId=Harbour.mp4 volume=0.5");
    row("play harbour on layer 2 with 40% volume and sunset beach on layer 3 with 60% volume",
        "0 bPlay=true layerId=2 mediaId=Harbour.mp4 volume=0.4; 0 bPlay=true layerId=3 mediaId=Sunset_Beach.mov "
        "volume=0.6");
    row("play harbour on layer 2 and mute layer 3",
        "0 bPlay=true layerId=2 mediaId=Harbour.mp4; 1002 layerId=3 volume=0");
    row("volume of layer 3: 30", "1002 layerId=3 volume=0.3");
    row("change the volume on layer 2 from 50% to 30%", "1002 layerId=2 volume=0.3");
    row("set layer 2 to .5", "1002 layerId=2 volume=0.5");
    row("silence layer 2", "1002 layerId=2 volume=0");
    row("play harbour at one hundred percent", "0 bPlay=true mediaId=Harbour.mp4 volume=1");
    row("play harbour on layer 1 and show me how it looks", "", "I do not understand \"show me how it looks\"");
    row("play harbour on layer 2 of program 1 and layer 3 of program 2", "",
        "I do not understand \"layer 3 of program 2\"");
}

void ServiceSentencesTest::saysWhatItDoesNotUnderstand_data()
{
    columns();
    row("stop all layers except 2", "", "I do not understand \"except 2\"");
    row("stop everything except layer 2", "", "I do not understand \"except\"");
    row("stop everything but layer 2", "", "I do not understand \"but\"");
    row("stop layer 2, not layer 3", "", "I do not understand \"not layer 3\"");
    row("stop layer 2 or 3", "", "I do not understand \"or 3\"");
    row("stop layers 1-3", "", "I do not understand \"3\"");
    row("stop layers 1 to 3", "", "I do not understand \"3\"");
    row("stop layer 1/2", "", "I do not understand \"2\"");
    row("stop zebra on layer 2", "", "I do not understand \"zebra\"");
    row("stop layer 2 on the main output", "", "I do not understand \"main output\"");
    row("stop layer 2 at 8", "", "I do not understand \"8\"");
    row("mute all but layer 2", "", "I do not understand \"but\"");
    row("set layer 2 to two thirds", "", "I do not understand \"two thirds\"");
    row("set layer 2 to 50 or 60", "", "I do not understand \"50 or 60\"");
    row("set the brightness of layer 2 to 50%", "", "I do not understand \"brightness\"");
    row("set the volume from 20 to 80 on layer 1", "", "I do not understand \"80\"");
    row("set layer 2 to 50 %%", "", "I do not understand \"%\"");
    row("at 20:00, play harbour", "", "I do not understand \"at 20:00\"");
}

void ServiceSentencesTest::actsAtOnceOnly_data()
{
    columns();
    row("stop layer 2 in 10 seconds", "", "I can only act at once, not at a time or under a condition.");
    row("stop layer 2 when harbour ends", "", "I can only act at once, not at a time or under a condition.");
    row("mute layer 2 for 10 seconds", "", "I can only act at once, not at a time or under a condition.");
    row("play harbour in 5 minutes", "", "I can only act at once, not at a time or under a condition.");
    row("play harbour at 8 pm", "", "I can only act at once, not at a time or under a condition.");
    row("play harbour tomorrow on layer 2", "", "I can only act at once, not at a time or under a condition.");
    row("play harbour on layer 1 then stop it after 10 seconds", "",
        "I can only act at once, not at a time or under a condition.");
    row("if layer 1 is empty, play harbour", "", "I can only act at once, not at a time or under a condition.");
    row("after harbour, play sunset beach", "", "I can only act at once, not at a time or under a condition.");
    row("in 5 minutes, stop layer 2", "", "I can only act at once, not at a time or under a condition.");
    row("set layer 2 volume to 50 in 3 seconds", "", "I can only act at once, not at a time or under a condition.");
    row("play harbour in a loop", "", "I can play, stop and set a volume, but not pause, resume or loop.");
}

void ServiceSentencesTest::leavesAloneWhatIsNoRequest_data()
{
    columns();
    row("don't stop layer 2", "", "All right, I leave everything as it is.");
    row("please don't stop layer 2", "", "All right, I leave everything as it is.");
    row("do not play harbour on layer 2", "", "All right, I leave everything as it is.");
    row("don't mute layer 2", "", "All right, I leave everything as it is.");
    row("is harbour playing?", "", "No language model");
    row("what's playing on layer 2", "", "No language model");
    row("how do I stop layer 2", "", "No language model");
    row("harbour is playing on layer 2", "", "No language model");
    row("the play was great", "", "No language model");
    row("i played harbour yesterday", "", "No language model");
    row("tell me if layer 2 is playing", "", "No language model");
}

void ServiceSentencesTest::asksForTheVolume_data()
{
    columns();
    row("set layer 2 to 1", "", "Which volume shall I set?");
    row("play harbour at volume 1", "", "Which volume shall I set?");
    row("set layer 2 to 1 || 100 percent", "1002 layerId=2 volume=1");
    row("set layer 2 to -6 dB", "", "The volume goes from 0 to 100 %; -6 dB is not possible.");
    row("turn mute off on layer 2", "", "Which volume shall I set?");
    row("take the mute off layer 2", "", "Which volume shall I set?");
    row("turn off the mute on layer 2", "", "Which volume shall I set?");
    row("cancel mute on layer 2", "", "Which volume shall I set?");
    row("unmute everything", "", "Which volume shall I set?");
    row("turn it up", "", "I do not know the present volume.");
    row("volume up", "", "I do not know the present volume.");
    row("quieter", "", "I do not know the present volume.");
    row("increase the volume of layer 2 20%", "", "I do not know the present volume.");
    row("turn layer 2 down by 10%", "", "I do not know the present volume.");
    row("lower layer 2 by 10", "", "I do not know the present volume.");
    row("lower layer 2 to 20", "1002 layerId=2 volume=0.2");
    row("play harbour at one hundred and twenty percent", "",
        "The volume goes from 0 to 100 %; 120 % is not possible.");
    row("set layer 2 to one hundred twenty percent", "", "The volume goes from 0 to 100 %; 120 % is not possible.");
    row("play harbour at volume three hundred", "", "The volume goes from 0 to 100 %; 300 % is not possible.");
}

void ServiceSentencesTest::asksForTheLayer_data()
{
    columns();
    row("stop playing", "", "Which layer shall I stop?");
    row("stop playing harbour", "", "Which layer shall I stop?");
    row("stop number 2", "", "Which layer shall I stop?");
    row("take harbour off", "", "Which layer shall I stop?");
    row("clear all", "", "Which layer shall I stop?");
    row("clear all layers", "1001 bPlay=false");
    row("mute harbour", "", "For which layer shall I set the volume?");
}

void ServiceSentencesTest::asksForTheItem_data()
{
    columns();
    row("play anything but harbour", "", "I found nothing named \"anything but harbour\"");
    row("play harbour instead of sunset beach", "", "I found nothing named \"harbour instead of sunset beach\"");
    row("play harbour or sunset beach", "", "I found nothing named \"harbour or sunset beach\"");
    row("play harbour and sunset beach on layers 1 and 2", "", "I found nothing named \"harbour and sunset beach\"");
    row("play harbour on layer two and a half", "", "I found nothing named \"harbour on layer two and a half\"");
    row("play harbour on layer 1-3", "", "I found nothing named \"harbour 3\"");
    row("play harbour on layer 50%", "", "I found nothing named \"harbour on layer\"");
    row("play harbour on all layers", "", "I found nothing named \"harbour on all layers\"");
    row("play harbour on 2", "", "I found nothing named \"harbour on 2\"");
    row("put harbour on air", "", "I found nothing named \"harbour on air\"");
    row("play 5", "", "I found nothing named \"5\"");
    row("play news intro || none", "", "No language model");
    row("play news intro || the first on layer 2 at 40%",
        "0 bPlay=true layerId=2 mediaId=News Intro 01.mxf volume=0.4");
    row("play it || harbour", "0 bPlay=true mediaId=Harbour.mp4");
    row("play it || yes", "0 bPlay=true mediaId=It.mp4");
}

void ServiceSentencesTest::sendsNoFloodOfCommands()
{
    const QString ten = QStringLiteral("1, 2, 3, 4, 5, 6, 7, 8, 9, 10");
    const QString sentence = QStringLiteral("stop layers %1 on programs %2");
    const TextResult hundred = ask(sentence.arg(ten, ten), library());
    QCOMPARE(hundred.agentCommands.size(), 100);
    const TextResult more = ask(sentence.arg(ten, ten + QStringLiteral(", 11")), library());
    QCOMPARE(more.agentCommands.size(), 0);
    QVERIFY2(more.answer.contains(QStringLiteral("I do not understand")), qPrintable(more.answer));
}

QTEST_GUILESS_MAIN(ServiceSentencesTest)
#include "tst_servicesentences.moc"
