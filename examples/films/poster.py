# A poster in black and a red spot colour for Scribus; saved as poster.sla, and exported as a PDF for the printer.
#   scribus -g -py poster.py
import scribus

scribus.newDocument((105, 148), (10, 10, 10, 10), scribus.PORTRAIT, 1, scribus.UNIT_MILLIMETERS, scribus.PAGE_1, 0, 1)
scribus.defineColorCMYK("Red", 0, 230, 200, 0)
scribus.setSpotColor("Red", True)
scribus.defineColorCMYK("Key", 0, 0, 0, 255)


def box(top, height, colour, shade):
    name = scribus.createRect(10, top, 85, height)
    scribus.setFillColor(colour, name)
    scribus.setFillShade(shade, name)
    scribus.setLineColor("None", name)


box(60, 55, "Red", 100)
box(40, 15, "Red", 50)
box(122, 16, "Key", 50)
word = scribus.createText(10, 10, 85, 28)
scribus.setText("Fair", word)
scribus.setFont("DejaVu Sans Bold", word)
scribus.setFontSize(50, word)
scribus.setTextColor("Key", word)
scribus.saveDocAs("poster.sla")

pdf = scribus.PDFfile()
pdf.file = "scribus.pdf"
pdf.outdst = 1  # for a printer: colours stay CMYK and spot
pdf.version = 14  # PDF 1.4
pdf.save()
