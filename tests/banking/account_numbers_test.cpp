// IBAN, CCC and the SEPA creditor identifier against the published vectors, valid and not.
#include "banking/account_numbers.h"
#include "context/working_context.h"

#include <gtest/gtest.h>

namespace tallora::banking {
namespace {

TEST(Ccc, TheCheckDigitsOfTheVectors) {
    EXPECT_TRUE(validCcc("1234 1234 16 1234567890"));
    EXPECT_TRUE(validCcc("2100 0418 45 0200051332"));
    EXPECT_FALSE(validCcc("2100 0418 45 0200051331")) << "its second check digit is wrong";
    EXPECT_FALSE(validCcc("2100 0418 55 0200051332")) << "its first check digit is wrong";
    EXPECT_FALSE(validCcc("2100 0418 45 020005133")) << "19 digits";
    EXPECT_FALSE(validCcc("2100 0418 45 02000513A2"));
    EXPECT_EQ(cccCheckDigits("21000418", "0200051332"), "45");
}

TEST(Ccc, ACheckOfTenBecomesOneAndOfElevenZero) {
    // Entity and office "00000000" weigh nothing: 11 - 0 = 11 gives 0.
    EXPECT_EQ(cccCheckDigits("00000000", "0000000000"), "00");
    // The first digit of an account weighs 1: a sum of 1 leaves 11 - 1 = 10, which gives 1;
    // the second weighs 2: 11 - 2 = 9 stands.
    EXPECT_EQ(cccCheckDigits("00000000", "1000000000").right(1), "1");
    EXPECT_EQ(cccCheckDigits("00000000", "0100000000").right(1), "9");
    // The last weighs 6: 2 x 6 = 12 leaves 1 and gives 1 as well.
    EXPECT_EQ(cccCheckDigits("00000000", "0000000002").right(1), "1");
}

TEST(Iban, ACccBecomesItsIban) {
    EXPECT_EQ(ibanOfCcc("1234 1234 16 1234567890"), "ES7712341234161234567890");
    EXPECT_EQ(ibanOfCcc("21000418450200051332"), "ES9121000418450200051332");
    EXPECT_FALSE(ibanOfCcc("2100 0418 45 0200051331"));
}

TEST(Iban, TheChecksOfTheVectors) {
    EXPECT_TRUE(validIban("ES0521053014113400002160"));
    EXPECT_TRUE(validIban("ES91 2100 0418 4502 0005 1332"));
    EXPECT_TRUE(validIban("es7712341234161234567890"));
    EXPECT_FALSE(validIban("ES9221000418450200051332")) << "check digits off by one";
    EXPECT_FALSE(validIban("ES912100041845020005133")) << "23 characters";
    EXPECT_FALSE(validIban("ES9121000418450200051332X"));
    // A foreign IBAN passes on its own check: Germany's example.
    EXPECT_TRUE(validIban("DE89 3704 0044 0532 0130 00"));
    EXPECT_FALSE(validIban("DE88 3704 0044 0532 0130 00"));
    EXPECT_FALSE(validIban(""));
    EXPECT_FALSE(validIban("1234"));
}

TEST(Iban, GroupsOfFour) {
    EXPECT_EQ(groupedAccount("es9121000418450200051332"), "ES91 2100 0418 4502 0005 1332");
}

TEST(CreditorIdentifier, TheVectors) {
    EXPECT_EQ(creditorIdentifier("B85626240"), "ES77000B85626240");
    EXPECT_EQ(creditorIdentifier("47690558N", "ZZZ"), "ES23ZZZ47690558N");
    EXPECT_TRUE(validCreditorIdentifier("ES23ZZZ47690558N"));
    EXPECT_TRUE(validCreditorIdentifier("ES2300047690558N")) << "the suffix does not count";
    EXPECT_TRUE(validCreditorIdentifier("ES77000B85626240"));
    EXPECT_FALSE(validCreditorIdentifier("ES78000B85626240"));
    EXPECT_FALSE(validCreditorIdentifier("ES77000B8562624"));
    EXPECT_FALSE(validCreditorIdentifier("FR77000B85626240"));
}

TEST(AccountField, StandsForAnIbanWhetherTypedAsIbanOrAsCcc) {
    EXPECT_EQ(ibanOfAccount("2100 0418 45 0200051332"), QString("ES9121000418450200051332"));
    EXPECT_EQ(ibanOfAccount("es91 2100 0418 4502 0005 1332"), QString("ES9121000418450200051332"));
    EXPECT_EQ(ibanOfAccount("DE89 3704 0044 0532 0130 00"), QString("DE89370400440532013000"));
    EXPECT_FALSE(ibanOfAccount("2100 0418 45 0200051331"));
    EXPECT_FALSE(ibanOfAccount(""));
}

TEST(AccountField, ASpanishIbanIsKeptAsTheCccInsideIt) {
    EXPECT_EQ(storedAccount("ES91 2100 0418 4502 0005 1332"), "21000418450200051332");
    EXPECT_EQ(storedAccount("21000418450200051332"), "21000418450200051332");
    // What cannot be an account of twenty digits stays as it was typed.
    EXPECT_EQ(storedAccount("DE89370400440532013000"), "DE89370400440532013000");
    EXPECT_EQ(storedAccount("ES92 2100 0418 4502 0005 1332"), "ES92 2100 0418 4502 0005 1332");
    EXPECT_EQ(storedAccount("cuenta 12"), "cuenta 12");
}

TEST(AccountField, WarnsOfAWrongNumberInTheProgramsLanguage) {
    WorkingContext ctx;
    EXPECT_EQ(accountWarning(ctx, ""), "");
    EXPECT_EQ(accountWarning(ctx, "2100 0418 45 0200051332"), "");
    EXPECT_EQ(accountWarning(ctx, "ES05 2105 3014 1134 0000 2160"), "");
    const QString ccc = accountWarning(ctx, "2100 0418 45 0200051331");
    const QString iban = accountWarning(ctx, "ES05 2105 3014 1134 0000 2161");
    const QString other = accountWarning(ctx, "12345");
    EXPECT_TRUE(ccc.contains("cuenta")) << ccc.toStdString();
    EXPECT_TRUE(iban.contains("IBAN")) << iban.toStdString();
    EXPECT_TRUE(other.contains("CCC")) << other.toStdString();
    EXPECT_NE(ccc, iban);
    ctx.setIdioma("cat");
    EXPECT_TRUE(accountWarning(ctx, "2100 0418 45 0200051331").contains("compte"));
}

}  // namespace
}  // namespace tallora::banking
