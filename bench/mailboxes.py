"""Mailboxes to be measured, always the same ones."""

import datetime
import random
from email.message import EmailMessage
from email.policy import SMTP
from email.utils import format_datetime

SENDERS = ("Osric Fenn", "Wilhelmina Aldous", "Sørine Aagesvold", "Фёдор Лугов", "佐藤みどり")

# A charset, how it is sent, and words that it can write.
SCRIPTS = (
    ("us-ascii", "7bit", "the quick offer of Tuesday meeting free golden and feathers regards"),
    ("iso-8859-1", "quoted-printable", "liebe Grüße von der Hütte über Straßen Äpfel für möglich"),
    ("utf-8", "8bit", "naïve coordination – “quoted” words façade über piñata"),
    ("utf-8", "base64", "добрый день отчёт за третий квартал встреча бесплатно"),
    ("koi8-r", "8bit", "добрый день отчёт за третий квартал встреча бесплатно"),
    ("shift_jis", "base64", "来週の 打ち合わせ について お世話に なっております"),
)
SMALL_BYTES = 2000
MIXED_TEXT = 12_500  # what a message weighs without attachments
MIXED_BYTES = 43_000_000
MIXED_COUNT = 1000


def lines(source, words, size):
    """As many lines of these words as make about so many characters."""
    text = ""
    while len(text) < size:
        text += " ".join(source.choices(words, k=10)) + "\n"
    return text


def fields(source, number):
    """The fields of a header that every message has."""
    moment = datetime.datetime(2020, 1, 1) + datetime.timedelta(minutes=source.randrange(2_000_000))
    zone = datetime.timezone(datetime.timedelta(hours=source.randrange(-8, 9)))
    return {
        "Received": f"from relay.example.net by mail.example.com with ESMTP id {number:08}; {format_datetime(moment)}",
        "To": "Robin Thorne <robin@example.org>",
        "Date": format_datetime(moment.replace(tzinfo=zone)),
        "Message-ID": f"<{number}.{source.randrange(10**9)}@example.com>",
    }


def small(source, number):
    """Plain text, 2 KB in all."""
    head = fields(source, number) | {"From": f"Osric Fenn <osric{number}@example.com>", "Subject": f"Minutes {number}"}
    text = "".join(f"{name}: {value}\n" for name, value in head.items()) + "\n"
    text += lines(source, SCRIPTS[0][2].split(), SMALL_BYTES - len(text) - 100)
    return text.replace("\n", "\r\n").encode()


def mixed(source, number, attached):
    """Text of any script, half of them with HTML beside it, and an attachment of so many bytes, if any."""
    charset, encoding, text = source.choice(SCRIPTS)
    words = text.split()
    message = EmailMessage(policy=SMTP)
    for name, value in fields(source, number).items():
        message[name] = value
    message["From"] = f'"{source.choice(SENDERS)}" <sender{source.randrange(500)}@example.com>'
    message["Subject"] = " ".join(source.choices(words, k=6))
    message.set_content(lines(source, words, source.randrange(300, 6000)), charset=charset, cte=encoding)
    if source.random() < 0.5:
        rows = lines(source, words, source.randrange(1000, 12000)).splitlines()
        page = "<html><body><table>" + "".join(f"<tr><td><b>{row}</b></td></tr>\n" for row in rows)
        message.add_alternative(page + "</table></body></html>", subtype="html", charset=charset, cte=encoding)
    if attached:
        kind = source.choice((("image", "jpeg"), ("application", "pdf"), ("application", "zip")))
        message.add_attachment(source.randbytes(attached), *kind, filename=f"{source.choice(words)} {number}.{kind[1]}")
    return message.as_bytes()


def write_small(folder, count):
    source = random.Random(1)
    return write(folder, (small(source, number) for number in range(count)))


def write_mixed(folder, count):
    """Three of ten messages carry what makes the mailbox as large as it is to be."""
    source = random.Random(2)
    attached = (MIXED_BYTES // MIXED_COUNT - MIXED_TEXT) * count * 57 // 78  # base64 makes 78 bytes out of 57
    carriers = [number for number in range(count) if number % 10 in (1, 4, 8)]
    weights = {number: source.random() ** 3 + 0.02 for number in carriers}
    sizes = {number: int(weight * attached / sum(weights.values())) for number, weight in weights.items()}
    return write(folder, (mixed(source, number, sizes.get(number, 0)) for number in range(count)))


def write(folder, messages):
    folder.mkdir()
    files = []
    for number, message in enumerate(messages):
        files.append(folder / f"{number:05}.eml")
        files[-1].write_bytes(message)
    return files
