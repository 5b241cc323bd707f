#!/usr/bin/env python3
"""Writes the empty documents that "New" copies: a Word document, an Excel workbook, and an
OpenDocument text and spreadsheet. Each is the smallest package its standard calls complete,
written from the XML below, with fixed times so that every build makes the same bytes.

usage: make-templates.py OUTDIR
"""
import os
import sys
import zipfile

FIXED = (1980, 1, 1, 0, 0, 0)
XML = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'

OPC_RELS = "http://schemas.openxmlformats.org/package/2006/relationships"
DOC_RELS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
CORE_PROPS = (XML + '<cp:coreProperties xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties"'
              ' xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:dcterms="http://purl.org/dc/terms/"'
              ' xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"><dc:creator></dc:creator></cp:coreProperties>')
APP_PROPS = (XML + '<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/extended-properties">'
             '<Application>Quaydrop</Application></Properties>')


def package_rels(main_type, main_target):
    return (XML + f'<Relationships xmlns="{OPC_RELS}">'
            f'<Relationship Id="rId1" Type="{DOC_RELS}/{main_type}" Target="{main_target}"/>'
            f'<Relationship Id="rId2" Type="http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties" Target="docProps/core.xml"/>'
            f'<Relationship Id="rId3" Type="{DOC_RELS}/extended-properties" Target="docProps/app.xml"/>'
            '</Relationships>')


def content_types(overrides):
    parts = "".join(f'<Override PartName="{name}" ContentType="{kind}"/>' for name, kind in overrides)
    return (XML + '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="xml" ContentType="application/xml"/>'
            '<Override PartName="/docProps/core.xml" ContentType="application/vnd.openxmlformats-package.core-properties+xml"/>'
            '<Override PartName="/docProps/app.xml" ContentType="application/vnd.openxmlformats-officedocument.extended-properties+xml"/>'
            + parts + '</Types>')


def write(path, members, first_stored=None):
    with zipfile.ZipFile(path, "w") as z:
        if first_stored:
            name, data = first_stored
            z.writestr(zipfile.ZipInfo(name, FIXED), data, compress_type=zipfile.ZIP_STORED)
        for name, data in members:
            z.writestr(zipfile.ZipInfo(name, FIXED), data, compress_type=zipfile.ZIP_DEFLATED)


def word(path):
    w = "http://schemas.openxmlformats.org/wordprocessingml/2006/main"
    write(path, [
        ("[Content_Types].xml", content_types([
            ("/word/document.xml", "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"),
            ("/word/styles.xml", "application/vnd.openxmlformats-officedocument.wordprocessingml.styles+xml")])),
        ("_rels/.rels", package_rels("officeDocument", "word/document.xml")),
        ("docProps/core.xml", CORE_PROPS),
        ("docProps/app.xml", APP_PROPS),
        ("word/_rels/document.xml.rels", XML + f'<Relationships xmlns="{OPC_RELS}">'
         f'<Relationship Id="rId1" Type="{DOC_RELS}/styles" Target="styles.xml"/></Relationships>'),
        ("word/styles.xml", XML + f'<w:styles xmlns:w="{w}"><w:docDefaults><w:rPrDefault><w:rPr>'
         '<w:sz w:val="24"/></w:rPr></w:rPrDefault></w:docDefaults>'
         '<w:style w:type="paragraph" w:default="1" w:styleId="Normal"><w:name w:val="Normal"/></w:style></w:styles>'),
        ("word/document.xml", XML + f'<w:document xmlns:w="{w}"><w:body><w:p/>'
         '<w:sectPr><w:pgSz w:w="11906" w:h="16838"/>'
         '<w:pgMar w:top="1440" w:right="1440" w:bottom="1440" w:left="1440" w:header="708" w:footer="708" w:gutter="0"/>'
         '</w:sectPr></w:body></w:document>'),
    ])


def excel(path):
    s = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
    write(path, [
        ("[Content_Types].xml", content_types([
            ("/xl/workbook.xml", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"),
            ("/xl/worksheets/sheet1.xml", "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"),
            ("/xl/styles.xml", "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml")])),
        ("_rels/.rels", package_rels("officeDocument", "xl/workbook.xml")),
        ("docProps/core.xml", CORE_PROPS),
        ("docProps/app.xml", APP_PROPS),
        ("xl/_rels/workbook.xml.rels", XML + f'<Relationships xmlns="{OPC_RELS}">'
         f'<Relationship Id="rId1" Type="{DOC_RELS}/worksheet" Target="worksheets/sheet1.xml"/>'
         f'<Relationship Id="rId2" Type="{DOC_RELS}/styles" Target="styles.xml"/></Relationships>'),
        ("xl/workbook.xml", XML + f'<workbook xmlns="{s}" xmlns:r="{DOC_RELS}">'
         '<sheets><sheet name="Sheet1" sheetId="1" r:id="rId1"/></sheets></workbook>'),
        ("xl/worksheets/sheet1.xml", XML + f'<worksheet xmlns="{s}"><sheetData/></worksheet>'),
        ("xl/styles.xml", XML + f'<styleSheet xmlns="{s}">'
         '<fonts count="1"><font><sz val="11"/><name val="Calibri"/></font></fonts>'
         '<fills count="2"><fill><patternFill patternType="none"/></fill><fill><patternFill patternType="gray125"/></fill></fills>'
         '<borders count="1"><border><left/><right/><top/><bottom/><diagonal/></border></borders>'
         '<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>'
         '<cellXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/></cellXfs>'
         '<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles></styleSheet>'),
    ])


ODF_NS = ('xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
          'xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" '
          'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" '
          'xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" '
          'xmlns:meta="urn:oasis:names:tc:opendocument:xmlns:meta:1.0" '
          'xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0"')


def opendocument(path, mimetype, body):
    manifest = (XML + f'<manifest:manifest {ODF_NS} manifest:version="1.2">'
                f'<manifest:file-entry manifest:full-path="/" manifest:version="1.2" manifest:media-type="{mimetype}"/>'
                '<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/>'
                '<manifest:file-entry manifest:full-path="styles.xml" manifest:media-type="text/xml"/>'
                '<manifest:file-entry manifest:full-path="meta.xml" manifest:media-type="text/xml"/>'
                '</manifest:manifest>')
    # The mimetype comes first and stored, so that the type can be read at a fixed offset.
    write(path, [
        ("META-INF/manifest.xml", manifest),
        ("content.xml", XML + f'<office:document-content {ODF_NS} office:version="1.2">'
         f'<office:body>{body}</office:body></office:document-content>'),
        ("styles.xml", XML + f'<office:document-styles {ODF_NS} office:version="1.2"><office:styles/></office:document-styles>'),
        ("meta.xml", XML + f'<office:document-meta {ODF_NS} office:version="1.2"><office:meta>'
         '<meta:generator>Quaydrop</meta:generator></office:meta></office:document-meta>'),
    ], first_stored=("mimetype", mimetype))


def main():
    out = sys.argv[1]
    os.makedirs(out, exist_ok=True)
    word(os.path.join(out, "_NewMSWordDocument.docx"))
    excel(os.path.join(out, "_NewWorkbook.xlsx"))
    opendocument(os.path.join(out, "_NewDocument.odt"), "application/vnd.oasis.opendocument.text",
                 "<office:text><text:p/></office:text>")
    opendocument(os.path.join(out, "_NewSpreadsheet.ods"), "application/vnd.oasis.opendocument.spreadsheet",
                 '<office:spreadsheet><table:table table:name="Sheet1"><table:table-column/>'
                 '<table:table-row><table:table-cell/></table:table-row></table:table></office:spreadsheet>')


if __name__ == "__main__":
    main()
