#include "info/nobotherfrm.h"

#include <string>

#include "feed/hosts.h"

namespace borvane {

namespace {

constexpr std::string_view before_the_address =
    "Hi this is Borvane Team.\r\n"
    "\r\n"
    "Let me take just a minute of your time. \r\n"
    "We at Nalvorin would like to know who is using our software and where. If it is used in a school, a news service, "
    "a tv channel or any other type of organization "
    "please give us a minute and send us an email telling us. We would love to list your organization at our web site. "
    "If this is the case send your name, "
    "organization where it is used with address, city and country, your position at such organization, and any other "
    "relevant information. If the org has a "
    "graphic logo we can place it with a link as well.\r\n"
    "\r\n"
    "If you are a student, tell us about you. What you do, in what way this program is helping you and "
    "what else we can do to keep helping you.\r\n"
    "\r\n"
    "\r\n"
    "send your mail to: ";

constexpr std::string_view after_the_address =
    "\r\n"
    "\r\n"
    "Thank you";

}  // namespace

UserNoteForm::UserNoteForm()
    : FormBase({.Name = "nobotherfrm",
                .Caption = "Borvane - About you (the user)",
                .ClientWidth = 8355,
                .ClientHeight = 3060,
                .Border = BorderStyle::FixedSingle,
                .Start = StartPlace::MiddleOfFirstScreen}) {}

void UserNoteForm::Form_Load() {
  Text1.Text = std::string(before_the_address).append(MakerMail()).append(after_the_address);
}

}  // namespace borvane
