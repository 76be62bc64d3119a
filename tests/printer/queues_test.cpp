// Queues as they are written, choices of jobs over theirs, and records of jobs.
#include "io/refusal.h"
#include "printer/filming/film_job.h"
#include "printer/jobs/job_record.h"
#include "printer/queues/queue.h"
#include "support/toolbox_test.h"

namespace {

using namespace riders::printer;
using Words = std::vector<std::string>;

TEST(QueueTextTest, IsANameAndChoices)
{
    const Queue queue = queueFromText("fine:screens=offset,plates=Gold:60@75,Line,hold,negative=no,dpi=1440x720");
    EXPECT_EQ(queue.name, "fine");
    EXPECT_TRUE(queue.hold);
    EXPECT_EQ(queue.choices.arguments(), (Words{"--dpi=1440x720", "--plate=Gold:60@75,Line", "--screens=offset"}));
    EXPECT_EQ(queueFromText("films").choices.arguments(), Words());
    for (const char *wrong :
         {"", ":", "1st", "a b", "a:frequency", "a:frequency=0", "a:colour=red", "a:dpi=high", "a:hold=perhaps",
          "a:folder=x,printer=y", "a:hold,printer=y", "a:screens=offset,angle=45", "a:marks=label+x",
          "a:negative=1", "a:rotate=45", "a:angle=400"})
        EXPECT_THROW(queueFromText(wrong), riders::io::Refusal) << wrong;
}

TEST(QueueFileTest, HasATableForEachQueue)
{
    const std::vector<Queue> queues =
        queuesFromToml("[queue.riso]\nscreens = \"riso-two\"\ndpi = 600\nlook = true\n"
                       "[queue.gold]\nplates = [\"Gold:60@75,Line\", \"Black:@45\"]\n",
                       "queues.toml");
    ASSERT_EQ(queues.size(), 2U);
    EXPECT_EQ(queues[0].choices.arguments(), (Words{"--plate=Gold:60@75,Line", "--plate=Black:@45"}));
    EXPECT_TRUE(queues[1].look);
    EXPECT_EQ(queues[1].choices.arguments(), (Words{"--dpi=600", "--screens=riso-two"}));
    const auto why = [](const char *bytes) -> std::string {
        try {
            queuesFromToml(bytes, "q");
        } catch (const riders::io::Refusal &refusal) {
            return refusal.message;
        }
        return {};
    };
    EXPECT_EQ(why("[queue.a]\ndpi = \"x\"\n"),
              "q:2:1: expected for dpi dots per inch, as in 1200 or 1440x720, not \"x\"");
    EXPECT_EQ(why("name = 1\n"), "q:1:1: expected tables of queues only, as in [queue.fine]");
    EXPECT_EQ(why("[queue]\na = 1\n"), "q:2:1: expected the choices of a queue, as in [queue.fine]");
    EXPECT_NE(why("[queue.a\n"), "");
    EXPECT_NE(why("[queue.a]\ndpi = []\n"), "");
}

TEST(QueueFileTest, IsWrittenAsItIsRead)
{
    const Queue queue = queueFromText("fine:plates=Gold:60@75,Line;Say \"x\\y\":60,marks=label+crop,hold,dpi=600");
    const std::vector<Queue> read = queuesFromToml(tomlOf(queue), "q");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].name, queue.name);
    EXPECT_EQ(read[0].choices, queue.choices);
    EXPECT_TRUE(read[0].hold);
}

TEST(ChoicesTest, OfAJobComeOverThoseOfItsQueue)
{
    const Queue queue = queueFromText("a:frequency=60,angle=45,dpi=600");
    Choices job;
    job.set("screens", "offset", ChosenBy::job);
    EXPECT_EQ(job.over(queue.choices).arguments(), (Words{"--dpi=600", "--screens=offset"}));
    Choices angle;
    angle.set("angle", "30", ChosenBy::job);
    EXPECT_EQ(angle.over(queueFromText("a:screens=offset").choices).arguments(), Words{"--angle=30"});
    EXPECT_THROW(job.set("screens", "/etc/passwd", ChosenBy::job), riders::io::Refusal);
    EXPECT_THROW(job.set("plates", "Gold:60@75,./shape", ChosenBy::job), riders::io::Refusal);
    EXPECT_THROW(job.set("frequency", "6\n0", ChosenBy::job), riders::io::Refusal);
}

TEST(JobRecordTest, IsReadAgainAsItWasWritten)
{
    JobRecord record{.key = {"films", 17}, .state = JobState::held, .title = "Two\nlines \\n = x", .user = "Ada"};
    record.accepted = 1700000000;
    record.choices.set("angle", "-45", ChosenBy::job);
    record.message = "no";
    const JobRecord read = recordFromText(textOf(record));
    EXPECT_EQ(textOf(read), textOf(record));
    EXPECT_EQ(read.title, record.title);
    EXPECT_EQ(read.choices, record.choices);
    for (const char *wrong :
         {"", "riders printer job 2\n", "riders printer job 1\n", "riders printer job 1\nqueue=a\n",
          "riders printer job 1\nqueue=a\nnumber=x\n", "riders printer job 1\nqueue=a\nnumber=-1\n",
          "riders printer job 1\nqueue=a\nnumber=1\nstate=odd\n",
          "riders printer job 1\nqueue=a\nnumber=1\nodd=1\n"})
        EXPECT_THROW(recordFromText(wrong), riders::io::Refusal) << wrong;
}

TEST(FilmNameTest, IsTheTitleAsAFileMayBeCalled)
{
    EXPECT_EQ(nameOfFilms("brochure.pdf"), "brochure");
    EXPECT_EQ(nameOfFilms("/home/ada/two words.ps"), "two-words");
    EXPECT_EQ(nameOfFilms("../..;rm\n"), "rm-");
    EXPECT_EQ(nameOfFilms("Über"), "Über");
    for (const char *nothing : {"", "...", "/"})
        EXPECT_EQ(nameOfFilms(nothing), "job") << nothing;
    EXPECT_EQ(nameOfFilms(std::string(79, 'a') + "ü"), std::string(79, 'a'));
}

}  // namespace
