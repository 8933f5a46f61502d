// The page's own words in the languages of the sheets.

const kWords = {
    en: {
        drawing: 'Drawing', both: 'Both', model: '3-D', theme: 'Dark or light', search: 'Search parts',
        label: 'Item', quantity: 'Qty', name: 'Name', tag: 'Tag', zoomIn: 'Zoom in', zoomOut: 'Zoom out',
        fit: 'Whole drawing', home: 'Whole model', isolate: 'Isolate', callouts: 'Callouts', view: 'View',
        list: 'Parts list', all: 'All', shown: 'Seen in the drawing', unseen: 'Not seen in the drawing',
        parts: 'Parts', none: 'No part matches.', item: 'Item', close: 'Close', instances: 'Places',
        noModel: 'This browser cannot show 3-D.', summary: {items: ['{n} item', '{n} items'], parts: ['{n} part', '{n} parts']}, count: '{shown} of {all} items',
    },
    de: {
        drawing: 'Zeichnung', both: 'Beides', model: '3D', theme: 'Dunkel oder hell', search: 'Teile suchen',
        label: 'Pos.', quantity: 'Menge', name: 'Benennung', tag: 'Kennzeichen', zoomIn: 'Vergrößern', zoomOut: 'Verkleinern',
        fit: 'Ganze Zeichnung', home: 'Ganzes Modell', isolate: 'Freistellen', callouts: 'Positionen', view: 'Ansicht',
        list: 'Stückliste', all: 'Alle', shown: 'In der Zeichnung zu sehen', unseen: 'In der Zeichnung verdeckt',
        parts: 'Teile', none: 'Kein Teil passt.', item: 'Position', close: 'Schließen', instances: 'Einbauorte',
        noModel: 'Dieser Browser kann kein 3D zeigen.', summary: {items: ['{n} Position', '{n} Positionen'], parts: ['{n} Teil', '{n} Teile']},
        count: '{shown} von {all} Positionen',
    },
    fr: {
        drawing: 'Dessin', both: 'Les deux', model: '3D', theme: 'Sombre ou clair', search: 'Chercher une pièce',
        label: 'Rep.', quantity: 'Qté', name: 'Désignation', tag: 'Marque', zoomIn: 'Agrandir', zoomOut: 'Réduire',
        fit: 'Tout le dessin', home: 'Tout le modèle', isolate: 'Isoler', callouts: 'Repères', view: 'Vue',
        list: 'Nomenclature', all: 'Toutes', shown: 'Visibles sur le dessin', unseen: 'Cachées sur le dessin',
        parts: 'Pièces', none: 'Aucune pièce trouvée.', item: 'Repère', close: 'Fermer', instances: 'Emplacements',
        noModel: 'Ce navigateur ne peut pas afficher la 3D.', summary: {items: ['{n} repère', '{n} repères'], parts: ['{n} pièce', '{n} pièces']},
        count: '{shown} repères sur {all}',
    },
    es: {
        drawing: 'Dibujo', both: 'Ambos', model: '3D', theme: 'Oscuro o claro', search: 'Buscar piezas',
        label: 'Pos.', quantity: 'Cant.', name: 'Denominación', tag: 'Etiqueta', zoomIn: 'Ampliar', zoomOut: 'Reducir',
        fit: 'Todo el dibujo', home: 'Todo el modelo', isolate: 'Aislar', callouts: 'Posiciones', view: 'Vista',
        list: 'Lista de piezas', all: 'Todas', shown: 'Visibles en el dibujo', unseen: 'Ocultas en el dibujo',
        parts: 'Piezas', none: 'Ninguna pieza coincide.', item: 'Posición', close: 'Cerrar', instances: 'Lugares',
        noModel: 'Este navegador no puede mostrar 3D.', summary: {items: ['{n} posición', '{n} posiciones'], parts: ['{n} pieza', '{n} piezas']},
        count: '{shown} de {all} posiciones',
    },
    ja: {
        drawing: '図', both: '両方', model: '3D', theme: '明暗', search: '部品を検索', label: '番号', quantity: '数量',
        name: '名称', tag: 'タグ', zoomIn: '拡大', zoomOut: '縮小', fit: '図全体', home: 'モデル全体', isolate: '分離',
        callouts: '番号表示', view: '表示', list: '部品表', all: 'すべて', shown: '図に見える', unseen: '図に見えない',
        parts: '部品', none: '該当する部品はありません。', item: '番号', close: '閉じる', instances: '取付位置',
        noModel: 'このブラウザーでは3Dを表示できません。', summary: {items: ['{n} 項目', '{n} 項目'], parts: ['部品 {n} 点', '部品 {n} 点']}, count: '{all} 項目中 {shown} 項目',
    },
};

/** The words of a language such as "de" or "de-AT"; English where there are none. */
export function wordsOf(language) {
    return kWords[language.toLowerCase().split(/[-_]/)[0]] ?? kWords.en;
}

/** Puts values into "{places}" of a text. */
export function filled(text, values) {
    return text.replace(/\{(\w+)\}/g, (_, name) => String(values[name]));
}

/** Of a text for one and a text for more, the one that fits, with the number. */
export function counted([one, more], n) {
    return filled(n === 1 ? one : more, {n});
}
