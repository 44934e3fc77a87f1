#!/usr/bin/env python3
"""Makes about forty messages of many kinds for the demo, in three mailboxes.

The names of the files in OUTDIR/work, OUTDIR/home and OUTDIR/club sort into the
order in which to deliver them. Two runs with the same --now give the same bytes.
"""

import argparse
import base64
import datetime
import hashlib
import io
import quopri
import random
import struct
import zipfile
import zlib
from email.header import Header
from email.utils import format_datetime, formataddr
from pathlib import Path

OWNERS = {
    "work": ("Robin Thorne", "robin.thorne@example.com"),
    "home": ("Robin", "robin@example.net"),
    "club": ("R. Thorne (treasurer)", "treasurer@example.org"),
}


def crlf(text):
    return text.strip("\n").replace("\n", "\r\n") + "\r\n"


def part(kind, data, encoding="7bit", disposition=None):
    """Header fields and body of one MIME part; a message is such a part with more fields before it."""
    if encoding == "base64":
        data = base64.encodebytes(data).replace(b"\n", b"\r\n")
    elif encoding == "quoted-printable":
        data = quopri.encodestring(data.replace(b"\r\n", b"\n")).replace(b"\n", b"\r\n")
    fields = f"Content-Type: {kind}\r\nContent-Transfer-Encoding: {encoding}\r\n"
    if disposition:
        fields += f"Content-Disposition: {disposition}\r\n"
    return fields.encode() + b"\r\n" + data


def text(body, charset="us-ascii", encoding="7bit", kind="plain", extra="", disposition=None):
    return part(f"text/{kind}; charset={charset}{extra}", crlf(body).encode(charset), encoding, disposition)


def html(body, encoding="quoted-printable"):
    page = f"<!DOCTYPE html>\n<html><head><title></title></head>\n<body>\n{body.strip()}\n</body></html>"
    return text(page, "utf-8", encoding, kind="html")


def multipart(kind, *parts):
    boundary = "=_" + hashlib.sha1(b"".join(parts)).hexdigest()[:24]
    lines = b"".join(b"--%s\r\n%s\r\n" % (boundary.encode(), each) for each in parts)
    return (
        f'Content-Type: multipart/{kind};\r\n boundary="{boundary}"\r\n\r\n'.encode()
        + b"This message has several parts.\r\n\r\n"
        + lines
        + f"--{boundary}--\r\n".encode()
    )


def both(plain, page):
    """The same words twice, as most mail programs send them."""
    return multipart("alternative", text(plain, "utf-8", "quoted-printable"), html(page))


def attached(kind, name, data):
    return part(f'{kind}; name="{name}"', data, "base64", f'attachment; filename="{name}"')


def subject(words, charset="us-ascii"):
    return Header(words, charset, header_name="Subject").encode(linesep="\r\n")


def sender(name, address, charset="utf-8"):
    return formataddr((name, address), charset)


def picture(width, height, paint):
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    rows = b"".join(b"\0" + bytes(v for x in range(width) for v in paint(x, y)) for y in range(height))
    size = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def sunset():
    return picture(320, 200, lambda x, y: (255 - y // 3, 160 - y // 2, 60 + (x + y) // 5))


def badge():
    def paint(x, y):
        return (30, 110, 90) if (x - 48) ** 2 + (y - 48) ** 2 < 44**2 else (250, 246, 235)

    return picture(96, 96, paint)


def pdf(line):
    stream = f"BT /F1 18 Tf 72 720 Td ({line}) Tj ET"
    objects = [
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R"
        " /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >>",
        f"<< /Length {len(stream)} >>\nstream\n{stream}\nendstream",
    ]
    out, offsets = "%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += f"{number} 0 obj\n{body}\nendobj\n"
    table = "".join(f"{offset:010} 00000 n \n" for offset in offsets)
    out += f"xref\n0 5\n0000000000 65535 f \n{table}trailer\n<< /Size 5 /Root 1 0 R >>\nstartxref\n"
    return (out + f"{out.index('xref')}\n%%EOF\n").encode()


def archive(files):
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as packed:
        for name, content in files.items():
            packed.writestr(zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0)), content)
    return out.getvalue()


def forwarded():
    fields = (
        f"From: {sender('Ilse Quarrington', 'ilse.quarrington@example.org')}\r\n"
        "To: members@example.org\r\n"
        "Subject: Key to the boathouse\r\n"
        "Date: Mon, 06 Jan 2020 18:12:00 +0000\r\n"
        "Message-ID: <boathouse.key@example.org>\r\n"
        "MIME-Version: 1.0\r\n"
    )
    return part("message/rfc822", fields.encode() + text("The spare key hangs behind the third oar.\n\nIlse"))


# Each line: sender, subject, hours before now, content. A fifth member gives
# header fields that differ from the usual ones; None leaves one out.
def work():
    yield (
        sender("Tilda Marrow", "tilda.marrow@example.com"),
        subject("Welcome to the new mail server"),
        520,
        text("Hello Robin,\n\nyour mailbox has moved over the weekend. Nothing should be missing.\n\nTilda"),
    )
    yield (
        sender("Osric Fenn", "osric.fenn@example.com"),
        subject("Minutes of Tuesday's planning meeting"),
        470,
        multipart(
            "mixed",
            text("Hi all,\n\nthe minutes are attached. Please tell me by Friday if I got something wrong.\n\nOsric"),
            attached("application/pdf", "minutes.pdf", pdf("Minutes of the planning meeting")),
        ),
    )
    yield (
        sender("Amélie Vautrin", "a.vautrin@example.com", "iso-8859-1"),
        subject("Réservation de la salle « Étoile » confirmée", "iso-8859-1"),
        431,
        text(
            "Bonjour Robin,\n\nla salle est réservée jeudi de 9 h à 11 h. Le café est commandé.\n\nÀ bientôt,\nAmélie",
            "iso-8859-1",
            "quoted-printable",
        ),
    )
    yield (
        sender("Build robot", "builds@example.com"),
        subject("[nightly] 1184 passed, 2 failed"),
        400,
        text("1184 passed\n   2 failed: label_printer/umlauts, label_printer/empty_roll\n\nTook 6 min 12 s."),
    )
    yield (
        sender("Marrow, Tilda", "tilda.marrow@example.com"),
        subject(
            "Re: Re: Question about the travel expenses of the visit to the northern branch office, "
            "the receipts that are still missing, and whether the ferry counts as a train"
        ),
        338,
        text("Robin,\n\nyes, the ferry counts as a train. Don't ask me why.\n\n> Is the ferry a train?\n\nTilda"),
    )
    yield (
        sender("Prize Office", "winner@lucky-parrot.invalid"),
        subject("CONGRATULATIONS!!! You WON 9,500,000 golden feathers"),
        306,
        html(
            "<h1><font color=red>YOU ARE OUR WINNER!!!</font></h1><p>Claim your <b>golden feathers</b> before midnight:"
            ' <a href="http://lucky-parrot.invalid/claim">CLICK HERE</a></p>'
        ),
    )
    yield (
        sender("Иван Берёзкин", "i.berezkin@example.com", "koi8-r"),
        subject("Отчёт за третий квартал", "koi8-r"),
        262,
        text("Добрый день!\n\nОтчёт готов. Посмотрите, пожалуйста, до пятницы.\n\nИван", "koi8-r", "8bit"),
    )
    yield (
        sender("Print & Copy Shop", "orders@printshop.test"),
        subject("Your order 20417 is ready"),
        215,
        both(
            "Your 250 cards are ready to be collected. Price: 38.50 €.",
            "<p>Your <b>250 cards</b> are ready to be collected.</p><p>Price: 38.50 &euro;</p>",
        ),
    )
    yield (
        sender("山田はなこ", "hanako@example.com", "iso-2022-jp"),
        subject("来週の打ち合わせについて", "iso-2022-jp"),
        190,
        text("お世話になっております。\n\n来週の打ち合わせは水曜日の十時からでお願いいたします。\n\nはなこ", "iso-2022-jp"),
    )
    yield (
        sender("Osric Fenn", "osric.fenn@example.com"),
        subject("Site photos, all of them (large!)"),
        121,
        multipart(
            "mixed",
            text("Here is the whole folder, sorry for the size.\n\nOsric"),
            attached("application/octet-stream", "photos.tar", random.Random(10).randbytes(10 * 1024 * 1024)),
        ),
    )
    yield (
        sender('Juno "Jay" Halvarsen', "juno@example.com"),
        subject("Draft of the leaflet"),
        74,
        multipart(
            "mixed",
            both("Picture below, text in the zip.\n\nJay", "<p>Picture below, text in the zip.</p><p><i>Jay</i></p>"),
            attached("image/png", "front page.png", sunset()),
            attached("application/zip", "leaflet.zip", archive({"leaflet.txt": "Fold here.\n" * 40})),
        ),
    )
    yield (
        sender("Tilda Marrow", "tilda.marrow@example.com"),
        subject("Coffee today? ☕", "utf-8"),
        27,
        text("The corner place at four? 🙂\n\nTilda", "utf-8", "base64"),
    )
    yield (
        sender("Help desk", "helpdesk@example.com"),
        subject("Ticket 5521 closed: the printer on the second floor prints everything twice twice"),
        8,
        text("The ticket has been closed.\n\nReply to this message to open it again. To open it again, reply."),
    )
    yield (
        sender("Perrin Ashdale", "perrin.ashdale@example.com"),
        subject("Running ten minutes late"),
        1,
        text("Stuck behind a tractor. Please begin without me.\n\nPerrin"),
    )


def home():
    yield (
        sender("Aunt Wilhelmina", "wilhelmina@example.net"),
        subject("The plum cake recipe, at last"),
        498,
        text(
            "Dear Robin,\n\nhere it is. Two pounds of plums, half a pound of butter, and patience.\n\n"
            "Do not open the oven before the hour is over!\n\nYours,\nWilhelmina"
        ),
    )
    yield (
        sender("Juliane Größner", "juliane@example.net"),
        "Grüße aus dem Schwarzwald".encode(),
        455,
        text("Liebe Grüße von der Hütte! Es regnet, die Laune ist trotzdem gut.\n\nJule", "utf-8", "8bit"),
    )
    yield (
        sender("The Corner Bookshop", "hello@cornerbooks.test"),
        subject("New in this week: maps, moss and murder"),
        410,
        both(
            "New in this week:\n* A Short History of Moss\n* The Cartographer's Alibi\n* Murder on Platform Zero",
            "<h2>New in this week</h2><ul><li>A Short History of Moss</li><li>The Cartographer's Alibi</li>"
            "<li>Murder on Platform Zero</li></ul>",
        ),
    )
    yield (
        sender("Dr. Feelgrand", "pills@feelgrand.invalid"),
        subject("L0SE WE1GHT while you SLEEP ~ guaranteed"),
        377,
        text("Our magic pillow melts pounds away!!! Only today 99% off. Reply NOW with your shoe size."),
    )
    yield (
        sender("Municipal Library", "noreply@library.test"),
        subject("Reminder: 2 books are due on Saturday"),
        333,
        text("Due on Saturday:\n  The Lighthouse Keeper's Accounts\n  Knots for Beginners\n\nPlease do not reply."),
    )
    yield (
        sender("Caspian Lowe", "caspian@example.net"),
        "",
        287,
        text("forgot the subject again, sorry. are you coming on sunday?\n\nc."),
    )
    yield (
        sender("Sørine Aagesvold", "sorine@example.net"),
        subject("Billeder fra søndagsturen", "utf-8"),
        240,
        multipart(
            "mixed",
            text("Kære Robin,\n\nhere are our pictures. Æbleskiver next time!\n\nSørine", "utf-8", "base64"),
            part(
                "image/png",
                sunset(),
                "base64",
                "attachment;\r\n filename*=utf-8''s%C3%B8ndagstur%20ved%20%C3%A5en.png",
            ),
        ),
    )
    yield (
        "aunt.wilhelmina@example.net",
        subject("Fwd: Fwd: Fwd: This hedgehog will make your day"),
        201,
        html('<p>Look!</p><p><img src="http://pictures.invalid/hedgehog.jpg" alt="A hedgehog in a tea cup"></p>'),
        {"To": None},
    )
    yield (
        sender("Northgate Water Works", "billing@waterworks.test"),
        subject("Your bill for the last quarter"),
        158,
        multipart(
            "mixed",
            html("<p>Dear customer,</p><p>your bill is attached. It will be paid from your account.</p>"),
            attached("application/pdf", "bill.pdf", pdf("Amount due: 41.20")),
        ),
    )
    yield (
        sender("Caspian Lowe", "caspian@example.net"),
        subject("Re: Sunday"),
        130,
        text(
            "Great! I will bring the kite, the long string and the thermos flask, and you \nbring the weather.\n\n"
            "> Yes, I am coming. What shall I \n> bring?\n\nC.",
            extra="; format=flowed",
        ),
    )
    yield (
        sender("Account Guard", "security@your-savings.invalid"),
        subject("URGENT: confirm your piggy bank or it will be CLOSED"),
        66,
        html(
            "<p>Dear valued costumer,</p><p>we noticed a strange coin in your piggy bank. "
            '<a href="http://your-savings.invalid/verify">Confirm your secret words</a> within 24 hours.</p>',
            "base64",
        ),
    )
    yield (
        sender("Juliane Größner", "juliane@example.net"),
        subject("Wieder zu Hause – und drei Gläser Honig für Dich", "utf-8"),
        49,
        text("Lieber Robin,\n\nder Honig steht vor Deiner Tür.\n\nJule", "utf-8", "quoted-printable"),
    )
    yield (
        sender("Neighbour at No. 14", "no14@example.net"),
        subject("Your parcel is with us"),
        12,
        text("Hi,\n\nthe postman left a parcel for you. We are in until nine.\n\nNo. 14"),
        {"Date": None},
    )


def club():
    yield (
        sender("Ilse Quarrington", "ilse.quarrington@example.org"),
        subject("Welcome, new treasurer!"),
        510,
        multipart(
            "mixed",
            text("Dear Robin,\n\ncongratulations! The message I once sent about the key is attached.\n\nIlse"),
            forwarded(),
        ),
    )
    yield (
        sender("Rowing Club, Secretary", "secretary@example.org"),
        subject("Agenda of the general meeting"),
        444,
        text("1. Report of the treasurer\n2. New paint for the boats\n3. The swan problem\n4. Any other business"),
        {"To": '"Members, all" <members@example.org>,\r\n "Friends & Family" <friends@example.org>'},
    )
    yield (
        sender("Barnaby Sedgewick", "barnaby@example.org"),
        subject("The swan problem"),
        420,
        text("It has happened again. It chased me to the jetty and took my hat.\n\nBarnaby"),
    )
    yield (
        sender("Élodie Marchetti", "elodie@example.org"),
        subject("Re: The swan problem (avec une idée)", "utf-8"),
        415,
        both("Bread. Far away from the jetty.\n\nÉlodie", "<p>Bread. <b>Far away</b> from the jetty.</p><p>Élodie</p>"),
    )
    yield (
        sender("Best Boats 4 U", "deals@boats4u.invalid"),
        subject("!!! Yachts at ROWING BOAT prices !!! $$$"),
        350,
        html("<center><h1>YACHTS!!!</h1><h2>Buy 1, get 3 FREE</h2><p>No questions. No answers.</p></center>"),
    )
    yield (
        sender("Фёдор Лугов", "fedor@example.org", "koi8-r"),
        subject("Фотографии с регаты", "utf-8"),
        282,
        multipart(
            "mixed",
            text("Всем привет! Фотографии с регаты во вложении.\n\nФёдор", "utf-8", "base64"),
            attached("image/png", "regatta.png", sunset()),
            attached("image/png", "badge.png", badge()),
        ),
    )
    yield (
        sender("Barnaby Sedgewick", "barnaby@example.org"),
        "Caf\u00e9 at the boathouse, who opens on Sunday?".encode("iso-8859-1"),
        236,
        text("I can do the morning only. The café key is with Ilse.\n\nBarnaby", "iso-8859-1", "8bit"),
    )
    yield (
        sender("Regatta Office", "office@regatta.test"),
        subject("Entry list and start times"),
        170,
        multipart(
            "mixed",
            text("Please check the names of your crews. The list is attached."),
            text(
                "time,crew,boat\n09:00,Sedgewick/Marchetti,Heron\n09:20,Lugov/Thorne,Bittern",
                kind="csv",
                disposition='attachment; filename="start times.csv"',
            ),
            text("Bring your own drinking water.", disposition="attachment; filename=notes.txt"),
        ),
    )
    yield (
        sender("佐藤みどり", "midori@example.org", "utf-8"),
        subject("ボートの写真をありがとう", "utf-8"),
        143,
        both("写真をありがとうございました。\n\nみどり", "<p>写真を<b>ありがとう</b>ございました。</p><p>みどり</p>"),
    )
    yield (
        sender("Online Roulette", "jackpot@wheel-of-turnips.invalid"),
        subject("=> 500 FREE TURNIPS on your first spin <="),
        96,
        text("Spin!!! Win!!! Grin!!!\n\nhttp://wheel-of-turnips.invalid/spin"),
    )
    yield (
        sender("Ilse Quarrington", "ilse.quarrington@example.org"),
        subject("Training on Thursday"),
        51,
        multipart(
            "mixed",
            text("Thursday at six, the appointment is attached.\n\nIlse"),
            part(
                "text/calendar; charset=utf-8; method=PUBLISH",
                crlf(
                    "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Rowing Club//EN\nBEGIN:VEVENT\nUID:training@example.org\n"
                    "DTSTAMP:20200101T000000Z\nDTSTART:20200102T180000Z\nSUMMARY:Training\nEND:VEVENT\nEND:VCALENDAR"
                ).encode(),
                disposition="attachment; filename=training.ics",
            ),
        ),
    )
    yield (
        sender("Élodie Marchetti", "elodie@example.org"),
        subject("The hat has been found"),
        19,
        text("It floats beside the weir. The swan is sitting in it.\n\nÉlodie", "utf-8", "quoted-printable"),
    )
    yield (
        sender("Rowing Club, Secretary", "secretary@example.org"),
        subject("Fees: three members have not paid yet"),
        3,
        text("Dear treasurer,\n\ncould you remind them? I would rather not.\n\nThe secretary"),
    )


def message(mailbox, number, now, entry):
    origin, topic, hours, content, *differences = entry
    zone = datetime.timezone(datetime.timedelta(hours=(number * 5) % 13 - 4))
    date = format_datetime((now - datetime.timedelta(hours=hours, minutes=number * 7)).astimezone(zone))
    fields = {
        "Received": f"from relay.example.net by mail.example.com\r\n\twith ESMTP id {mailbox}{number:04}; {date}",
        "From": origin,
        "To": formataddr(OWNERS[mailbox]),
        "Subject": topic,
        "Date": date,
        "Message-ID": f"<{mailbox}.{number:04}@mail.example.com>",
        "MIME-Version": "1.0",
    }
    for changes in differences:
        fields |= changes
    lines = b""
    for name, value in fields.items():
        if value is not None:
            lines += name.encode() + b": " + (value if isinstance(value, bytes) else value.encode("ascii")) + b"\r\n"
    return lines + content


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("outdir", type=Path, metavar="OUTDIR")
    options.add_argument(
        "--now",
        type=lambda given: datetime.datetime.fromisoformat(given).astimezone(),
        default=datetime.datetime.now().astimezone(),
        help="the moment before which all messages were sent, as 2020-01-31T12:00+00:00",
    )
    given = options.parse_args()
    for mailbox in (work, home, club):
        folder = given.outdir / mailbox.__name__
        folder.mkdir(parents=True, exist_ok=True)
        for number, entry in enumerate(mailbox(), 1):
            (folder / f"{number:02}.eml").write_bytes(message(folder.name, number, given.now, entry))


main()
